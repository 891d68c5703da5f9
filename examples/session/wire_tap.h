/// A relay between the two ends of a session that prints every byte.
#pragma once

#include <thread>

namespace example {

/// Listens on two loopback ports in place of a primary, passes what comes on to the primary's
/// own ports and back, and prints it on standard output, a line for each chunk that was received.
/// It ends when both ends have closed, or when it is destroyed.
class WireTap {
 public:
  /// Throws `Error` when there is no socket to be had.
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
  int stop_;  ///< an eventfd; readable once the tap is to end
  std::thread thread_;
};

}  // namespace example
