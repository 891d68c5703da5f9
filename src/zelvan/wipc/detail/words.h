/// The texts of the protocol, sent as messages without a terminator.
#pragma once

#include <zelvan/platform/sockets.h>

#include <string_view>

namespace zelvan {

constexpr std::string_view end_of_session = "SessionClosed";
constexpr std::string_view end_acknowledged = "Acknowledge";
constexpr std::string_view text_too_long = "Error Maximum message length exceeded";

/// Sends exactly the characters of a text, in one call. Returns the result of `platform::send`.
inline int send_text(int socket, std::string_view text) {
  return platform::send(socket, text.data(), static_cast<int>(text.size()));
}

}  // namespace zelvan
