/// Sessions between two processes: terms, settings and sockets.
///
/// A session joins two processes by two TCP streams. The *primary* opens and ends it; the
/// *secondary*, which the primary usually starts, is at the other end. Text goes both ways over the
/// data channel. Over the status channel it goes only from the secondary to the primary.
/// connection.h makes and ends sessions, messages.h sends and receives.
///
/// A session is an opaque handle. It is dead after `wipc_close_session`, or, at the secondary,
/// after `wipc_read` has returned -1 for it; a dead handle must not be used again. Every operation
/// accepts a null handle and says what it does with it.
///
/// Failures are reported by results only. Most also have a text, which is printed on standard
/// output after `wipc_set_debug(1)`.
///
/// Any process that can reach the machine's ports can connect to a session that is being opened,
/// and nothing is encrypted: use sessions only between trusted hosts.
/// `zelvan_set_local_sessions_only` keeps other machines out.
///
/// Threads: the settings and the pending connection are shared by all sessions, without locks. At
/// most one thread at a time may call any of these operations, whatever the session.
#pragma once

#include <zelvan/export.h>

/// The longest text of a message in bytes, without a terminator.
#define WIPC_MAX_MESSAGE 4000

/// Returns the last text that an operation of connection.h stored; empty before the first.
///
/// connection.h and `wipc_set_nostart` say when one is stored. The text has at most 255 characters;
/// longer ones are cut. It is never cleared, so it doesn't tell whether the last operation failed.
/// The address is always the same; the library owns the memory.
ZELVAN_API char* wipc_last_error(void);

/// Sets for how many seconds opening waits for each of the secondary's two connections; initially
/// 10. It polls every half second; with 0 or less it polls once.
ZELVAN_API void wipc_set_connect_timeout(int seconds);

/// Reports failures on standard output, which isn't flushed, if `on` is not 0. Initially 0: no
/// reports.
ZELVAN_API void wipc_set_debug(int on);

/// Keeps `wipc_open_session` from starting the program, if `on` is not 0. It then stores the
/// command line in `wipc_last_error()` instead, for a person or a debugger to run. Any value
/// of `on`, 0 too, sets the time to wait to 600 seconds; `wipc_set_connect_timeout` can change it.
ZELVAN_API void wipc_set_nostart(int on);

/// Keeps other machines out of the sessions that this process opens, if `on` is not 0. Initially 0:
/// any machine can connect.
///
/// While this is on, ports are opened on 127.0.0.1 only, an address that only programs on this
/// machine can reach. In addition, each incoming connection is checked: one from another address
/// than 127.0.0.1 is closed, and the wait continues.
///
/// Set it before opening, and keep it until the session is open. The ports of a pending connection
/// keep the address with which they were opened; the check applies if this is on when a connection
/// comes in.
///
/// The secondary has to connect to "localhost". `wipc_open_connection` then stores that as the
/// local host. Pass it to `wipc_open_session` as well, since this machine's own name can mean
/// another of its addresses. `wipc_connect_session` is not affected.
///
/// This tells machines apart, not users or programs. Any program on this machine can still connect
/// first, or keep the secondary from connecting by connecting all the time.
ZELVAN_C_API void zelvan_set_local_sessions_only(int on);

/// Returns the socket of the data channel, for a caller's own poll loop; -1 for a null handle.
///
/// Queued messages don't show on the socket: before you wait on it, read until `wipc_poll_session`
/// returns 0. At the secondary, close this socket when the session has ended: see
/// `wipc_close_session` and `wipc_read`.
ZELVAN_API int wipc_sid(void* session);

/// Returns the socket of the status channel; -1 for a null handle. See `wipc_sid`.
ZELVAN_API int wipc_status_sid(void* session);

/// Returns 1 if `wipc_read` would return at once: a message is queued, bytes have arrived, or the
/// peer has gone. Otherwise, and for a null handle, returns 0. Never waits, and doesn't look at the
/// status channel.
ZELVAN_API int wipc_poll_session(void* session);
