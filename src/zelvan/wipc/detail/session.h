/// The record behind a session handle, the family's state, and what both rest on.
#pragma once

namespace zelvan {

/// A queued message. The node owns its text until it is taken off.
struct wipc_message {
  char* text;          ///< from `malloc`
  wipc_message* next;  ///< towards the tail
  wipc_message* prev;  ///< towards the head
};

/// A session at either end, or a *bind session*: a listening socket on the way to one. Each
/// queue is first in, first out: messages join at the tail.
struct wipc_session {
  int sid;         ///< socket of the data channel; of a bind session the listening one
  int status_sid;  ///< socket of the status channel; 0 in a bind session
  char session_type;
  wipc_message* status_head;
  wipc_message* status_tail;
  wipc_message* data_head;
  wipc_message* data_tail;
};

constexpr char primary_end = 'P';
constexpr char secondary_end = 'S';
constexpr char bind_session = 'B';

// What all sessions of the process share. One thread at a time is inside the family, so nothing
// here is guarded.
extern int wipc_connect_timeout;           ///< seconds to wait for a connection
extern int wipc_debug;                     ///< not 0: `wipc_print` prints
extern int wipc_nostart;                   ///< not 0: opening starts no program
extern int keeps_machines_out;             ///< not 0: other machines can't connect
extern char wipc_error_text[256];          ///< behind `wipc_last_error`
extern wipc_session* wipc_bind_primary;    ///< of the connection that is pending, or null
extern wipc_session* wipc_bind_secondary;  ///< likewise
extern char wipc_local_host[256];          ///< the name of this machine once it was asked for

/// Prints as printf does, if debugging is on.
[[gnu::format(printf, 1, 2)]] void wipc_print(const char* format, ...);

/// Formats a text into `wipc_error_text`, cut to what it holds.
[[gnu::format(printf, 1, 2)]] void set_error_text(const char* format, ...);

/// Makes the sockets usable, once more with each call. 1 on success, else 0.
int wipc_startup(void);

/// A new bind session on a port of the system's choice, stored in `*port`; null on failure. It
/// doesn't listen yet.
wipc_session* wipc_create_bind(int* port);

/// 1 if the process has room for `n` more sockets, else 0: it makes them and closes them again.
int wipc_check_sockets(int n);

/// A new record without status socket and with empty queues; null if the heap refuses.
wipc_session* wipc_new_session(int sid, char session_type);

/// Releases a record with all that is still queued. The sockets stay as they are.
void release_session(wipc_session* session);

/// Closes the listening socket of a bind session and releases the record. Null does nothing.
void release_bind_session(wipc_session* session);

/// The same for the pair of the pending connection, both null afterwards.
void wipc_release_bind_sessions(void);

/// 1 if a read from the socket would not wait, else 0. Never waits.
int wipc_poll_socket(int socket);

/// The record of a handle; null for a null handle and for a bind session, which nothing but its
/// making and accepting may use.
wipc_session* usable_session(void* session);

}  // namespace zelvan
