// The walk that the header tells looks at every colon on its way. Here only commas are looked for:
// an item begins behind one and its separators, or with the text. The first item that answers is
// the one that the walk finds, if it gets there.

#include <zelvan/detail/bytes_at_once.h>
#include <zelvan/detail/name.h>
#include <zelvan/var/detail/commas.h>
#include <zelvan/var/search_value.h>

#include <algorithm>
#include <bit>
#include <cstring>

namespace {

constexpr std::size_t shortest_text = 3;  // a key, a colon and a value of one character each

bool is_separator(char c) { return c == ':' || c == ','; }

const char* skip_separators(const char* p) {
  while (is_separator(*p)) ++p;
  return p;
}

/// The next `c` at or behind `p`; the terminator if there is none.
const char* find_or_end(const char* p, char c) {
  while (*p != c && *p != '\0') ++p;
  return p;
}

unsigned char meaning(char c) { return zelvan::meaning<zelvan::AsWritten>(c); }

/// Does the item answer: is what it has up to the next colon a beginning of `key`?
bool answers(const char* item, const char* key) {
  for (; *item != ':'; ++item, ++key) {
    if (*item == '\0' || meaning(*item) != meaning(*key)) return false;
  }
  return true;
}

/// The beginning of a key, which tells most items that don't answer at once.
class KeyBeginning {
 public:
  explicit KeyBeginning(const char* key) {
    char bytes[8] = {};  // up to a colon, since no item's key has one
    for (int i = 0; i < 8 && key[i] != '\0' && key[i] != ':'; ++i) bytes[i] = key[i];
    case_bits_ = zelvan::case_bits(zelvan::eight_bytes(bytes));
    bytes_ = zelvan::eight_bytes(bytes) | case_bits_;
  }

  /// False if the first difference comes before a colon. *Requires:* eight bytes.
  bool may_be_meant(const char* item) const {
    const std::uint64_t differences = (zelvan::eight_bytes(item) | case_bits_) ^ bytes_;
    return differences == 0 || item[std::countr_zero(differences) / 8] == ':';
  }

 private:
  std::uint64_t bytes_;  // letters small
  std::uint64_t case_bits_;
};

/// The first item that answers to `key`; null if none does.
const char* find_item(const char* text, const char* end, const char* key) {
  const char* item = skip_separators(text);
  if (answers(item, key)) return item;
  // Separators may follow a comma; the item begins behind them, and commas among them are done.
  const auto answers_behind = [&](const char* comma) {
    if (comma < item) return false;
    item = skip_separators(comma + 1);
    return answers(item, key);
  };

  const char* p = item;
  constexpr std::ptrdiff_t block = 32, beginning = 8;
  if (end - p >= block + beginning) {
    const KeyBeginning sought(key);
    do {
      for (std::uint32_t commas = zelvan::commas_in_32(p); commas != 0; commas &= commas - 1) {
        const char* const comma = p + std::countr_zero(commas);
        if (sought.may_be_meant(comma + 1) && answers_behind(comma)) return item;
      }
      p += block;
    } while (end - p >= block + beginning);
  }
  for (p = find_or_end(p, ','); p != end; p = find_or_end(p + 1, ',')) {
    if (answers_behind(p)) return item;
  }
  return nullptr;
}

/// True if there is an item before this one that has no colon of its own, and so borrows this
/// one's.
bool lends_its_colon(const char* text, const char* item) {
  const char* p = item;
  while (p != text && is_separator(p[-1])) --p;
  while (p != text && p[-1] != ',') --p;
  const char* const item_before = skip_separators(p);
  return item_before != item && std::find(item_before, item, ':') == item;
}

}  // namespace

std::intptr_t utl_searchValueForKey(const char* text, const char* key, const char** value) {
  *value = nullptr;
  if (text == nullptr || key == nullptr) return 0;
  const std::size_t length = std::strlen(text);
  if (length < shortest_text) return 0;
  const char* const end = text + length;

  const char* const item = find_item(text, end, key);
  if (item == nullptr) return 0;
  const char* const start = skip_separators(find_or_end(item, ':'));
  if (start == end) return 0;
  // The walk ends where it takes the last byte of the text for the value of an item.
  if (start == end - 1 && lends_its_colon(text, item)) return 0;
  *value = start;
  return find_or_end(start, ',') - start;
}
