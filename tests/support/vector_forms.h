/// Switches for the vector forms, for test programs that contain the objects of the library.
#pragma once

#include <zelvan/detail/vector_forms.h>

namespace support {

template <class... Form>
void force_plain_forms(zelvan::FormList<Form...> /*forms*/) {
  ((Form::may_run = false), ...);
}

template <class Run>
void for_each_form(Run& run, zelvan::FormList<> /*none*/) {
  run(zelvan::Plain::name);
}

template <class Run, class First, class... Others>
void for_each_form(Run& run, zelvan::FormList<First, Others...> /*forms*/) {
  const bool may_run = First::may_run;
  First::may_run = false;
  for_each_form(run, zelvan::FormList<Others...>{});
  First::may_run = may_run;
  if (may_run) run(First::name);  // runs First: the forms before it in the list are off
}

/// Calls `run(name)` with the plain forms forced, and with each vector form of this processor.
template <class Run>
void for_each_form(Run run) {
  for_each_form(run, zelvan::VectorForms{});
}

}  // namespace support
