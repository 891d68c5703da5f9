#include <zelvan/platform/comparison.h>
#include <zelvan/var/detail/name.h>

namespace zelvan {
namespace {

std::size_t significant_length(const char* name) {
  std::size_t length = 0;
  while (length < significant_name_length && name[length] != '\0' && !is_control(name[length])) {
    ++length;
  }
  return length;
}

}  // namespace

bool is_same_name(const char* a, const char* b) {
  if (a == nullptr) a = "";
  if (b == nullptr) b = "";
  const std::size_t length = significant_length(a);
  return length == significant_length(b) && platform::_strnicmp(a, b, length) == 0;
}

}  // namespace zelvan
