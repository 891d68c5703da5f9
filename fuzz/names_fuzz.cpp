// Changes a name list and compares it with a model, a vector of pairs; or searches a line of items
// for a key. Names are short and use few letters, so that equal ones occur often.

#include <zelvan/var/name_list.h>
#include <zelvan/var/search_value.h>

#include "bytes.h"

#include <cctype>
#include <utility>
#include <vector>

namespace {

using fuzz::Bytes;
using fuzz::require;

/// Returns a name of up to two characters.
std::string name_of(Bytes& bytes) {
  static const char letters[] = "aAbBcC_1";
  std::string name;
  for (int code = bytes.byte(), n = code % 3; n > 0; --n, code /= 8) {
    name += letters[(code / 3) % 8];
  }
  return name;
}

std::string folded(std::string name) {
  for (char& c : name) c = static_cast<char>(std::tolower(c));
  return name;
}

class Model {
 public:
  using Nodes = std::vector<std::pair<std::string, void*>>;

  ~Model() {
    for (VarNameInfo* const* head = &list_; *head != nullptr;) {
      VarDeleteNameInfo(&list_, std::string((*head)->name).c_str());
    }
  }

  void step(Bytes& bytes) {
    const std::string name = name_of(bytes), other = name_of(bytes);
    const Nodes::iterator first = find(name), reference = find_last(other);
    const bool is_there = first != nodes_.end(), has_reference = reference != nodes_.end();
    void* const info = reinterpret_cast<void*>(++count_);
    switch (bytes.below(6)) {
      case 0:
        require((VarAddNameInfo(&list_, name.c_str(), info) != nullptr) == !is_there);
        if (!is_there) nodes_.emplace_back(name, info);
        break;
      case 1: {
        const int position = bytes.below(3);
        const bool fits = !is_there && (position == 2 || has_reference);
        require((VarInsertNameInfo(&list_, name.c_str(), info, position, other.c_str()) !=
                 nullptr) == fits);
        if (!fits) break;
        const auto place = position == 2 ? nodes_.end() : reference + (position == 1);
        nodes_.insert(place, {name, info});
        break;
      }
      case 2: {
        void* const gone = VarDeleteNameInfo(&list_, name.c_str());
        require(gone == (is_there ? first->second : nullptr));
        if (is_there) nodes_.erase(first);
        break;
      }
      case 3: {
        const Nodes::iterator last = find_last(name);
        VarExchangeNameInfo(list_, name.c_str(), other.c_str());
        if (is_there && has_reference) std::swap(last->second, reference->second);
        break;
      }
      case 4:
        require((VarReplaceNameInfo(list_, name.c_str(), other.c_str()) != nullptr) == is_there);
        if (is_there) first->first = other;
        break;
      default: {
        void* found = &list_;
        require(VarLookupNameInfo(list_, name.c_str(), &found) == is_there);
        require(found == (is_there ? first->second : &list_));
      }
    }
    VarNameInfo* entry = list_;
    for (const auto& node : nodes_) {
      require(entry != nullptr && node.first == VarGetName(entry));
      require(VarListInfo(entry) == node.second);
      VarNextListEntry(&entry);
    }
    require(entry == nullptr);
  }

 private:
  Nodes::iterator find(const std::string& name) {
    for (auto i = nodes_.begin(); i != nodes_.end(); ++i) {
      if (folded(i->first) == folded(name)) return i;
    }
    return nodes_.end();
  }

  Nodes::iterator find_last(const std::string& name) {
    auto found = nodes_.end();
    for (auto i = nodes_.begin(); i != nodes_.end(); ++i) {
      if (folded(i->first) == folded(name)) found = i;
    }
    return found;
  }

  VarNameInfo* list_ = nullptr;
  Nodes nodes_;
  std::uintptr_t count_ = 0;
};

void search(Bytes& bytes) {
  fuzz::ExactText key(bytes.text(static_cast<std::size_t>(bytes.below(6))));
  fuzz::ExactText text(bytes.text(500));
  const char* value = text.get();
  const std::intptr_t length = utl_searchValueForKey(text.get(), key.get(), &value);
  require((value == nullptr) == (length == 0));
  if (value == nullptr) return;
  const char* const end = value + length;
  require(value > text.get() && end <= text.get() + text.length());
  require(*end == ',' || *end == '\0');
  require(std::memchr(value, ',', static_cast<std::size_t>(length)) == nullptr);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Bytes bytes(data, size);
  if (bytes.below(2) == 0) {
    search(bytes);
  } else {
    Model model;
    while (bytes.left() > 0) model.step(bytes);
  }
  return 0;
}
