/// Texts from `malloc`, with one owner.
#pragma once

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

namespace zelvan {

struct FreeText {
  void operator()(char* text) const { std::free(text); }
};
using HeapText = std::unique_ptr<char, FreeText>;

/// Returns a copy of `text` with a terminating zero; null if the heap refuses.
inline HeapText heap_copy(std::string_view text) {
  HeapText copy(static_cast<char*>(std::malloc(text.size() + 1)));
  if (copy == nullptr) return nullptr;
  std::memcpy(copy.get(), text.data(), text.size());
  copy.get()[text.size()] = '\0';
  return copy;
}

}  // namespace zelvan
