// Prints the sizes, offsets and values of records and constants. They must be the same as C and as
// C++ (c_header.py compares). C++ also checks that each field has the type that the C header
// states.

#include <zelvan/zelvan_c.h>

#include <stddef.h>
#include <stdio.h>

#ifdef __cplusplus
#include <type_traits>
#define SAME_TYPE(type, ...) static_assert(std::is_same_v<type, __VA_ARGS__>, "not as for C");
#else
#define SAME_TYPE(type, ...)
#endif

#define SIZE(type) printf(#type ": %d bytes\n", (int)sizeof(type));
#define FIELD(record, field, ...)                  \
  SAME_TYPE(decltype(record::field), __VA_ARGS__); \
  printf(#record "." #field ": at %d\n", (int)offsetof(record, field));
#define CONSTANT(name) printf(#name ": %d\n", (int)name);

int main(void) {
#include "facts.inc"
  return 0;
}
