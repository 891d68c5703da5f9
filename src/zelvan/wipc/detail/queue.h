/// Queues of messages, and how bytes off the wire become messages.
#pragma once

#include <zelvan/wipc/detail/session.h>

namespace zelvan {

/// Takes the oldest message off a queue and returns its text, for the caller to `free`; null if
/// the queue is empty.
char* wipc_dequeue(wipc_message** head, wipc_message** tail);

/// Waits for bytes on one of the session's two sockets and queues the messages that they are:
/// a message ends at a NUL, and at the end of what was received. Returns 1, or 0 if nothing came
/// because the peer has gone. Messages that the heap has no room for are lost.
int wipc_fill_queues(wipc_session* session, int socket);

}  // namespace zelvan
