/// Sessions between two processes: what they are, and the switches of the family.
///
/// A session joins two processes by two TCP streams. The *primary* opens it and owns its life;
/// the *secondary*, which the primary usually starts, is at the other end. Over the data channel
/// text goes both ways, over the status channel from the secondary to the primary only.
/// connection.h makes and ends sessions, messages.h sends and receives.
///
/// A session is an opaque handle. It is dead once `wipc_close_session` has been called, or, at
/// the secondary, once `wipc_read` has given -1 for it; a dead handle must not be used again. A
/// null handle is no session, and every operation says what it does with one.
///
/// Failures show in results alone. Most have a text as well, which is printed on standard output
/// only after `wipc_set_debug`.
///
/// Whoever has access to the machine's ports can connect to a session being opened, and nothing
/// is encrypted: for trusted hosts only. `zelvan_set_local_sessions_only` keeps other machines out.
///
/// Threads: the family shares its switches and pending connections, unguarded. One thread at a
/// time may be inside any of its operations, whatever the session.
#pragma once

#include <zelvan/export.h>

/// The longest text of a message in bytes, without a terminator.
#define WIPC_MAX_MESSAGE 4000

/// The last text that an operation of connection.h stored, empty before the first: what its
/// header says. At most 255 characters, longer ones are cut. It is never cleared, so it doesn't
/// tell whether the last operation failed. The address is always the same; the memory is the
/// library's.
ZELVAN_API char* wipc_last_error(void);

/// Sets for how many seconds opening waits for each of the secondary's two connections: 10 at
/// first. Looks come every half second; with 0 or less there is a single one.
ZELVAN_API void wipc_set_connect_timeout(int seconds);

/// Not 0: failures are told on standard output, which isn't flushed. 0, as at first: they aren't.
ZELVAN_API void wipc_set_debug(int on);

/// Not 0: `wipc_open_session` starts no program but leaves the command line in
/// `wipc_last_error()` for a person or a debugger to run. Whatever the value, the time to wait
/// becomes 600 seconds; call `wipc_set_connect_timeout` afterwards for another.
ZELVAN_API void wipc_set_nostart(int on);

/// Keeps other machines out of the sessions that this process opens, if `on` is not 0. With 0, as
/// at first, any machine can connect.
///
/// While the switch is on, ports are opened on 127.0.0.1 alone, an address that only programs of
/// this machine reach. Each connection that comes in is checked as well: from another address than
/// 127.0.0.1 it is closed, and the wait continues.
///
/// Set it before opening, and leave it so until the session stands. The ports of a pending
/// connection keep the address with which they were opened; the check is made if the switch is on
/// when a connection comes in.
///
/// The secondary has to connect to "localhost". `wipc_open_connection` then stores that as the
/// local host. Pass it to `wipc_open_session`, since this machine's own name can mean another of
/// its addresses. `wipc_connect_session` connects wherever it is told.
///
/// Machines are told apart, not users and programs: any program on this machine can still be the
/// first to connect, or keep the secondary from connecting by connecting all the time.
ZELVAN_C_API void zelvan_set_local_sessions_only(int on);

/// The socket of the data channel, for a caller's own poll loop; -1 for a null handle.
///
/// Queued messages don't show on the socket: before you wait on it, read until
/// `wipc_poll_session` returns 0. At the secondary it is also what to close when the session has
/// ended: see `wipc_close_session` and `wipc_read`.
ZELVAN_API int wipc_sid(void* session);

/// The socket of the status channel likewise; -1 for a null handle.
ZELVAN_API int wipc_status_sid(void* session);

/// 1 if `wipc_read` would find something at once: a queued message, bytes, or that the peer has
/// gone. Else 0, and for a null handle. Never waits, and doesn't look at the status channel.
ZELVAN_API int wipc_poll_session(void* session);
