/// Locked access to a stream for several steps.
#pragma once

#include <cstdio>

namespace zelvan::platform {

/// Calls `work(argument)` while no other thread can use the stream. The stream is released when
/// `work` returns, or when the thread is cancelled in it.
void with_locked_stream(std::FILE* stream, void (*work)(void*), void* argument);

// For use inside `work`. An interrupted read is resumed, and changes neither the stream's state nor
// `errno`.

/// Reads bytes through the first carriage return or line feed, at most `size`. Returns the number
/// of bytes, which is smaller at the end of the file and after an error.
int read_through_line_end(std::FILE* stream, char* buffer, int size);

/// Returns the next byte without removing it; EOF at the end of the file and after an error.
int peek(std::FILE* stream);

}  // namespace zelvan::platform
