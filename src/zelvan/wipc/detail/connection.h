/// The steps of which opening a session is made.
#pragma once

namespace zelvan {

/// Listens and waits for a connection, looking every half second while the connect time-out
/// lasts. Returns the connection, or -1. A look takes one connection at most, and closes it if it
/// comes from a machine that is kept out. An attempt to accept that fails returns -1 at once, or
/// while machines are kept out counts as a look. The listening socket stays open.
int wipc_wait_accept(int socket);

/// A socket connected to a port of that host in at most five attempts, or -1.
int wipc_connect_port(const char* host, int port);

/// The path of a program, for the caller to `free`: a name with a `/` after its first character
/// as it stands, any other with the first entry of "PATH" that holds it. Null if none does.
char* wipc_find_module(const char* module);

}  // namespace zelvan
