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
/// The secondary does the same in both cases: it passes the first three arguments of its command
/// line to `wipc_connect_session`. Then both exchange messages (messages.h), until the primary
/// calls `wipc_close_session`.
///
/// The system chooses the ports. They are open on all addresses of this machine, so any machine can
/// connect, unless `zelvan_set_local_sessions_only` keeps others out. The first to connect becomes
/// the secondary. `Last error` below means the text of `wipc_last_error`.
#pragma once

#include <zelvan/export.h>

/// Starts a program and opens a session with it. Returns the session at the primary end, or null.
///
/// The command line is `"module" host port port pid`. The program is in double quotes, so that its
/// path may contain blanks. `host` is the name by which the program finds this machine ("localhost"
/// unless another is needed), and pid is the id of this process. A line of 1024 bytes or more is
/// refused. No shell reads it. `module` is a path if it contains a `/`, otherwise a name that is
/// searched along "PATH", on Windows by the system's rules. The program inherits the environment,
/// the directory and descriptors 0 to 2, but no handle on Windows. When it ends, it leaves no
/// zombie for the caller to wait for.
///
/// Waits for the program's two connections, each for the time of `wipc_set_connect_timeout`. It
/// polls every half second, so opening takes about a second. If the program can't be started, the
/// call fails at once, with the command line as the last error. A program that ends without
/// connecting is noticed only when the time is up.
ZELVAN_API void* wipc_open_session(char* host, char* module);

/// Prepares a session whose secondary is started by other means. Returns 1 with all four outputs
/// set, or 0; then the outputs are undefined.
///
/// `host` names the machine on which the secondary will run. `*local_host` is the name of this
/// machine, or "localhost" while `zelvan_set_local_sessions_only` is on; the library owns the
/// memory. The secondary needs it and the two ports to connect.
///
/// `*is_local` is 1 if `host` is exactly the name of this machine or "localhost", in this spelling.
/// Then `module` must exist: a path if it contains a `/`, otherwise a name along "PATH". The last
/// error says if `host` has no address, or if a path doesn't exist; it doesn't report a name that
/// isn't found along "PATH".
///
/// Only one connection can be pending in a process. A further call with valid arguments ends the
/// previous one and closes its ports. If `host` has no address, the call returns 0, but the new
/// connection is pending all the same.
ZELVAN_API int wipc_open_connection(char* host, char* module, char** local_host, int* primary_port,
                                    int* secondary_port, int* is_local);

/// Waits for the secondary of the pending connection as `wipc_open_session` does. Returns the
/// session at the primary end, or null.
///
/// If the time is up, the connection stays pending, so the call can be repeated. If only the first
/// connection of a secondary has arrived by then, that secondary has to connect again.
ZELVAN_API void* wipc_accept_connection(void);

/// Connects to the primary on `host`. Returns the session at the secondary end, or null.
///
/// Each port is tried up to five times, with pauses of three seconds in all, because the primary
/// accepts the second connection only after the first. So a refused port fails after about three
/// seconds. If the host doesn't answer, each attempt takes as long as the system waits for a
/// connection, which can be minutes.
ZELVAN_API void* wipc_connect_session(char* host, int primary_port, int secondary_port);

/// Ends a session and releases its queued messages; the handle is dead afterwards. Null does
/// nothing.
///
/// At the primary it tells the secondary, and waits until the secondary answers or has gone. Any
/// other text that arrives on the data channel ends the wait as well. Then both sockets are closed.
///
/// At the secondary it only releases the session: the primary isn't told, and the sockets stay
/// open. A secondary that wants to leave first says so in a message of its own, or exits.
ZELVAN_API void wipc_close_session(void* session);
