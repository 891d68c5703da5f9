/// The environment of the process, shared by all its threads: no thread may read it while another
/// one changes it.
#pragma once

namespace zelvan::platform {

/// Sets a variable from one text `name=value`, which is copied. The name ends at the first `=`; an
/// empty value sets the variable to the empty text. Returns 0. Returns -1 and changes nothing if
/// there is no `=`, if the name is empty, or if the heap refuses.
int _putenv(const char* assignment);

}  // namespace zelvan::platform
