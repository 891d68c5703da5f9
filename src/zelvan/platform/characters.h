/// Searches in text with multi-byte characters.
#pragma once

namespace zelvan::platform {

/// Returns the last position in `text` of the one-byte character `c`, or null.
///
/// The character set is that of the process's locale, on Windows that of its code page. A byte
/// inside a longer character doesn't match: some sets have characters whose second byte looks like
/// a backslash. Bytes that form no character count one by one, so text in another character set can
/// be searched as well.
///
/// Any thread may call this while no thread changes the locale.
const char* _mbsrchr(const char* text, char c);

}  // namespace zelvan::platform
