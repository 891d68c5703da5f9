/// The picker's process and the session with it.
#pragma once

#include "session/options.h"
#include "session/wire_tap.h"

#include <optional>
#include <string>

#include <sys/types.h>

namespace example {

/// A session with the picker, open while this object lives.
///
/// The destructor closes the session, which waits until the picker has acknowledged or ended. If
/// the process was started here, it waits for its end, too.
class PickerProcess {
 public:
  /// Opens a session as the options say: by `wipc_open_session`, or in two steps if the picker is
  /// on another machine or behind a wire tap, so that the ports can be passed on first. Throws
  /// `Error` if the program can't be started or does not connect in time.
  explicit PickerProcess(const Options& options);
  ~PickerProcess();
  PickerProcess(const PickerProcess&) = delete;
  PickerProcess& operator=(const PickerProcess&) = delete;

  void* session() const { return session_; }

 private:
  void open_in_two_steps(const Options& options);
  void wait_for_end();

  std::optional<WireTap> tap_;
  pid_t started_ = 0;  ///< the process that was started here; 0: none
  void* session_ = nullptr;
};

}  // namespace example
