/// The environment of the process, which all its threads share: no thread may read it while another
/// changes it.
#pragma once

namespace zelvan::platform {

/// Sets a variable from one text `name=value`. The name ends at the first `=`; an empty value
/// sets the variable to the empty text. The text is copied. Returns 0, or -1 with nothing changed
/// if there is no `=` or no name before it, or if memory ran out.
int _putenv(const char* assignment);

}  // namespace zelvan::platform
