/// Messages: short texts between the two ends of a session.
///
/// A message is a string of at most `WIPC_MAX_MESSAGE` (4000) bytes with no NUL inside. Texts
/// travel as they are: no length, no header, no conversion.
///
/// **Boundaries.** On the data channel nothing marks where a message ends. All bytes that have
/// arrived when the reader receives are one message: two texts written in a row can be read as one,
/// and a text can be read in two parts. On the status channel each text ends with a NUL, so texts
/// stay apart. Let the ends take turns (write, then read the answer before the next write) or frame
/// the texts, for instance by a line end at which the reader splits.
///
/// A reader that receives 4000 bytes at once, or 3999 that don't end in a NUL, takes the last text
/// among them for the beginning of a longer one and waits for more. The text that arrives next is
/// appended to it. If the two together have more than 4001 characters, an empty message is
/// delivered in their place. So send at most 3998 bytes if the peer should answer at once.
///
/// A write waits while the system's buffers are full because the peer doesn't read. Nothing here
/// closes a socket.
#pragma once

#include <zelvan/export.h>

/// Sends a text on the data channel. Returns 1, or 0 if the connection is broken, the handle is
/// null or the text is null.
///
/// A result of 1 doesn't mean that the peer has read the text. In place of a text above 4000 bytes
/// the message "Error Maximum message length exceeded" is sent, and the result is 1. An empty text
/// sends nothing.
ZELVAN_API int wipc_write(void* session, char* text);

/// Sends a text on the status channel, with its terminator. Returns 1, or 0 on failure.
///
/// Fails if the connection is broken, the text is longer than 4000 bytes, the handle or text is
/// null, and always at the primary end, which only reads there.
ZELVAN_API int wipc_write_status(void* session, char* text);

/// Waits for the next message of the data channel, copies it and returns the number of bytes
/// copied.
///
/// Returns 0 for an empty message, if the peer has gone, if `buffer` is null or if `length` is
/// below 1. Returns -1 for a null handle.
///
/// `length` is the size of `buffer`. A shorter text is followed by zeros to the end of the buffer;
/// one of `length` bytes or more fills it without a terminator, and the rest is lost. 4002 bytes
/// hold every message with its terminator.
///
/// At the secondary, -1 for a valid handle means that the primary has ended the session. The call
/// has answered the primary, and the handle is dead. The two sockets stay open. If the process
/// lives on, close the sockets that `wipc_sid` and `wipc_status_sid` returned before.
///
/// A signal doesn't end the wait, only the peer does. To read without waiting, call
/// `wipc_poll_session` first. To wait for other things as well, pass `wipc_sid` to your own poll
/// loop after `wipc_poll_session` has returned 0.
ZELVAN_API int wipc_read(void* session, char* buffer, int length);

/// Copies the next message of the status channel and returns its length, without waiting.
///
/// Works as `wipc_read` does, but returns 0 also if nothing has arrived, and always at the
/// secondary end. After 4000 bytes at once, or 3999 that don't end in a NUL, it does wait for more.
ZELVAN_API int wipc_read_status(void* session, char* buffer, int length);
