/// The steps of opening a session.
#pragma once

namespace zelvan {

/// Listens, and polls every half second for a connection until the connect time-out. Returns the
/// connection, or -1. The listening socket stays open.
///
/// Each poll accepts at most one connection, and closes it if it comes from a machine that is kept
/// out. A failed `accept` returns -1 at once, except while other machines are kept out: then
/// polling continues.
int wipc_wait_accept(int socket);

/// Returns a socket connected to a port of the host, after at most five attempts, or -1.
int wipc_connect_port(const char* host, int port);

/// Returns the path of a program, for the caller to `free`, or null if it isn't found. A name with
/// a `/` after its first character is returned unchanged; any other is searched along "PATH".
char* wipc_find_module(const char* module);

}  // namespace zelvan
