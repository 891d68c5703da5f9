/// Characters of more than one byte.
#pragma once

namespace zelvan::platform {

/// The last place in `text` where the one-byte character `c` stands, or null. In the character
/// set of the process's locale, on Windows of its code page, a byte inside a longer character is
/// no character of its own: some sets have characters whose second byte looks like a backslash.
/// Bytes that are no character at all count one by one, so a text from elsewhere is searched as
/// well.
///
/// Any thread, while nobody changes the locale.
const char* _mbsrchr(const char* text, char c);

}  // namespace zelvan::platform
