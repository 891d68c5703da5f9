/// Streams that one thread holds for several steps.
#pragma once

#include <cstdio>

namespace zelvan::platform {

/// Calls `work(argument)` while no other thread can use the stream. The stream is released when
/// `work` returns, and also when the thread is cancelled in it.
void with_locked_stream(std::FILE* stream, void (*work)(void*), void* argument);

// These two are for `work`. An interrupted read is resumed, without a trace in the stream or in
// `errno`.

/// Reads bytes through the first carriage return or line feed, at most `size` of them. Returns the
/// number of bytes, fewer at the end of the file and on an error.
int read_through_line_end(std::FILE* stream, char* buffer, int size);

/// Returns the next byte and leaves it in the stream; EOF at the end of the file and on an error.
int peek(std::FILE* stream);

}  // namespace zelvan::platform
