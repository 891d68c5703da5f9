/// Queues of messages, and the splitting of received bytes into messages.
#pragma once

#include <zelvan/wipc/detail/session.h>

namespace zelvan {

/// Removes the oldest message from a queue and returns its text, for the caller to `free`; null if
/// the queue is empty.
char* wipc_dequeue(wipc_message** head, wipc_message** tail);

/// Receives bytes from one of the session's two sockets and appends them as messages to the queue
/// of that socket. Returns 1, or 0 if nothing was received because the peer has gone.
///
/// A message ends at a NUL and at the end of the received bytes. But after 4000 bytes at once, or
/// 3999 that don't end in a NUL, the last message continues with what is received next. Messages
/// are lost if the heap refuses.
int wipc_fill_queues(wipc_session* session, int socket);

}  // namespace zelvan
