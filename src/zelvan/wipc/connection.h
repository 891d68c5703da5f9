/// Making and ending sessions.
///
/// The primary opens in one step or in two:
///
///     void* session = wipc_open_session(host, module);   // starts the program itself
///
///     wipc_open_connection(host, module, &local_host, &primary_port, &secondary_port, &is_local);
///     ...                                                // get the program started by any means
///     void* session = wipc_accept_connection();
///
/// The secondary does the same for both: it takes the first three arguments of its command line
/// and passes them to `wipc_connect_session`. Then both talk (messages.h), until the primary
/// calls `wipc_close_session`.
///
/// Ports are the system's choice. They are open on all addresses of this machine, so that any
/// machine can connect, unless `zelvan_set_local_sessions_only` keeps others out. The first to
/// connect is the secondary. `Last error` below means the text of `wipc_last_error`.
#pragma once

#include <zelvan/export.h>

/// Starts a program and opens a session with it. Returns the session at the primary end, or null.
///
/// The command line is `"module" host port port pid`: the program in double quotes, so that its
/// path may hold blanks, then `host`, by which the program will find this machine ("localhost"
/// if nothing else is called for), the two ports, and the id of this process. A line of 1024
/// bytes or more is refused. No shell reads it; `module` is a path if it holds a `/`, else a name
/// to be found along "PATH", on Windows by the system's rules. The program inherits environment
/// and directory, and descriptors 0 to 2 but no handle on Windows, and is no child to wait for.
///
/// It waits for the program's two connections, each for as long as `wipc_set_connect_timeout`
/// says; looks come every half second, so that opening takes about a second. A program that
/// can't be started is told at once, with its command line as the last error. One that ends
/// without connecting is noticed only when the time is up.
ZELVAN_API void* wipc_open_session(char* host, char* module);

/// Prepares a session whose secondary someone else will start. Returns 1 with all four outputs set,
/// or 0 with any of them undefined.
///
/// `host` is the machine on which the secondary will run. `*local_host` is the name of this
/// machine, or "localhost" while `zelvan_set_local_sessions_only` is on. It is the library's
/// memory, and with the two ports it is what the secondary needs to connect. `*is_local` is 1 if
/// `host` is just the name of this machine or "localhost", in this very spelling, and then `module`
/// must exist: a path if it holds a `/`, else a name along "PATH". Such a path that doesn't exist,
/// or a `host` that has no address, is also the last error.
///
/// One connection can be pending in a process. Another call with valid arguments ends the one
/// before; its ports are closed. An unknown `host` leaves the connection pending.
ZELVAN_API int wipc_open_connection(char* host, char* module, char** local_host, int* primary_port,
                                    int* secondary_port, int* is_local);

/// Waits for the secondary of the pending connection as `wipc_open_session` does. Returns the
/// session at the primary end, or null. If the time is up the connection stays pending, so that
/// the call can be repeated; a secondary of which only the first connection came has to
/// connect anew.
ZELVAN_API void* wipc_accept_connection(void);

/// Connects to the primary on `host`. Returns the session at the secondary end, or null.
///
/// Each port is tried up to five times, with pauses of three seconds in all, since the primary gets
/// ready for the second connection only after it has seen the first. So a port that refuses fails
/// after about three seconds. A host that doesn't answer holds each attempt for as long as the
/// system waits for a connection, which can be minutes.
ZELVAN_API void* wipc_connect_session(char* host, int primary_port, int secondary_port);

/// Ends a session; the handle is dead afterwards. Null does nothing. What is queued is released.
///
/// At the primary it tells the secondary and waits until that has read the word and answers, or
/// has gone; any other text that arrives ends the wait as well. Then both sockets are closed. At
/// the secondary it only releases the session: the primary isn't told, and the sockets stay
/// open. A secondary that wants to go first tells so in a message of its own, or exits.
ZELVAN_API void wipc_close_session(void* session);
