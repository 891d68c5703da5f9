/// The record of a session, the state that all sessions share, and functions that work on either.
#pragma once

namespace zelvan {

/// A queued message. The node owns its text until the message is dequeued.
struct wipc_message {
  char* text;          ///< from `malloc`
  wipc_message* next;  ///< towards the tail
  wipc_message* prev;  ///< towards the head
};

/// A session at either end, or a *bind session*: a listening socket for a session that is being
/// opened. Queues are first in, first out; messages are appended at the tail.
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

// State shared by all sessions of the process, without locks: one thread at a time may call the
// wipc functions.
extern int wipc_connect_timeout;           ///< seconds to wait for a connection
extern int wipc_debug;                     ///< not 0: `wipc_print` prints
extern int wipc_nostart;                   ///< not 0: opening starts no program
extern int keeps_machines_out;             ///< not 0: other machines can't connect
extern char wipc_error_text[256];          ///< the text of `wipc_last_error`
extern wipc_session* wipc_bind_primary;    ///< data channel of the pending connection, or null
extern wipc_session* wipc_bind_secondary;  ///< status channel of that connection, or null
extern char wipc_local_host[256];          ///< this machine's name; empty until queried

/// Prints as printf does, if `wipc_debug` is not 0.
[[gnu::format(printf, 1, 2)]] void wipc_print(const char* format, ...);

/// Formats a text into `wipc_error_text`, cut to its size.
[[gnu::format(printf, 1, 2)]] void set_error_text(const char* format, ...);

/// Prepares the use of sockets; calls may be repeated and are counted. Returns 1 on success, else
/// 0.
int wipc_startup(void);

/// Creates a bind session on a port that the system chooses, and stores the port in `*port`;
/// returns null on failure. Does not listen yet.
wipc_session* wipc_create_bind(int* port);

/// Returns 1 if the process can open `n` more sockets, else 0: opens them and closes them again.
/// Refuses a negative `n`.
int wipc_check_sockets(int n);

/// Creates a record without a status socket and with empty queues; returns null if the heap
/// refuses.
wipc_session* wipc_new_session(int sid, char session_type);

/// Releases a record and its queued messages. The sockets stay open.
void release_session(wipc_session* session);

/// Closes the listening socket of a bind session and releases the record. Null does nothing.
void release_bind_session(wipc_session* session);

/// Closes and releases both bind sessions of the pending connection, and sets them to null.
void wipc_release_bind_sessions(void);

/// Returns 1 if a read from the socket would not wait, else 0. Never waits. Returns 0 for a socket
/// of 0 or below: 0 is the status socket of a new record.
int wipc_poll_socket(int socket);

/// Returns the record of a handle; null for a null handle and for a bind session, which callers may
/// not use.
wipc_session* usable_session(void* session);

}  // namespace zelvan
