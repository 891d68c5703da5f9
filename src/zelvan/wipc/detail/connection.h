/// A step of opening a session.
#pragma once

namespace zelvan {

/// Returns a socket connected to a port of the host, after at most five attempts, or -1.
int wipc_connect_port(const char* host, int port);

}  // namespace zelvan
