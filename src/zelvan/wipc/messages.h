/// Messages: short texts between the two ends of a session.
///
/// A message is a string of at most `WIPC_MAX_MESSAGE` (4000) bytes with no NUL inside. Texts
/// travel as they are: no length, no header, no conversion.
///
/// **Boundaries.** On the data channel nothing marks where a message ends. What has arrived when
/// the reader looks is one message: two writes in a row can be read as one text run together, and
/// a text can be read in two parts. On the status channel each text ends with a NUL, so texts
/// don't run together. Let the ends take turns (write, then read the answer before the next
/// write) or frame the texts, for instance by a line end that the reader splits at.
///
/// A reader that is given 4000 bytes at once, or 3999 that don't end in a NUL, takes their last
/// text for the beginning of a longer one and waits for more. What comes next is joined to it; if
/// the two exceed 4001 characters, an empty message is delivered instead. So send at most 3998
/// bytes where the peer is to answer at once.
///
/// A write waits where the peer doesn't read. Nothing here closes a socket.
#pragma once

#include <zelvan/export.h>

/// Sends a text on the data channel. Gives 1, or 0 if the connection is broken, and for a null
/// handle or a null text. That it was sent doesn't mean that the peer has read it.
///
/// Of a text above 4000 bytes nothing is sent; the peer gets the message "Error Maximum message
/// length exceeded" instead, and the result is 1. An empty text sends nothing.
ZELVAN_API int wipc_write(void* session, char* text);

/// Sends a text on the status channel, with its terminator. Gives 1, or 0 if the connection is
/// broken, for a text above 4000 bytes, which is not sent, a null handle or text, and at the
/// primary end, which only reads there.
ZELVAN_API int wipc_write_status(void* session, char* text);

/// Takes the next message of the data channel, waiting for it, and gives its length. 0 for an
/// empty message and where there is none: the peer has gone, `buffer` is null or `length` is
/// below 1. -1 for a null handle.
///
/// `length` is the size of `buffer`. A shorter text is followed by zeros to its end; one of
/// `length` bytes or more fills it without a terminator, and the rest is gone. 4002 bytes hold
/// every message with its terminator.
///
/// At the secondary, -1 for a valid handle means that the primary has ended the session: it has
/// been answered, and the handle is dead. The two sockets stay open; close those that
/// `wipc_sid` and `wipc_status_sid` gave before, if the process lives on.
///
/// A signal doesn't end the wait, only the peer does. For a read that doesn't wait ask
/// `wipc_poll_session` first; to wait for other things as well, give `wipc_sid` to a poll loop of
/// your own once `wipc_poll_session` gives 0.
ZELVAN_API int wipc_read(void* session, char* buffer, int length);

/// Takes the next message of the status channel at the primary end and gives its length, as
/// `wipc_read` does, but doesn't wait: 0 also if nothing has come. Always 0 at the secondary end.
ZELVAN_API int wipc_read_status(void* session, char* buffer, int length);
