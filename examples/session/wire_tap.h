/// A relay between the two ends of a session, which prints every byte.
#pragma once

#include <thread>

namespace example {

/// Listens on two loopback ports in place of a primary and relays both connections to the primary's
/// own ports: data in both directions, status only to the primary. Prints a line on standard output
/// for each chunk that it receives.
///
/// A thread of its own does so, until both ends have closed or this object is destroyed.
class WireTap {
 public:
  /// Throws `Error` if no socket can be opened.
  WireTap(int primary_data_port, int primary_status_port);
  ~WireTap();
  WireTap(const WireTap&) = delete;
  WireTap& operator=(const WireTap&) = delete;

  int data_port() const { return data_.port; }
  int status_port() const { return status_.port; }

 private:
  struct Listener {
    int socket;
    int port;
  };
  static Listener listen_on_loopback();
  void run(int primary_data_port, int primary_status_port);

  Listener data_;
  Listener status_;
  int stop_;  ///< an eventfd; readable when the thread must end
  std::thread thread_;
};

}  // namespace example
