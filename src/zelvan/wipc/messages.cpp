#include <zelvan/detail/heap_text.h>
#include <zelvan/wipc/detail/queue.h>
#include <zelvan/wipc/detail/session.h>
#include <zelvan/wipc/detail/words.h>
#include <zelvan/wipc/messages.h>
#include <zelvan/wipc/session.h>

#include <cstring>
#include <string_view>

namespace zelvan {
namespace {

/// Returns the length of a text to send; 4001 if it is longer than 4000, without reading further.
std::size_t length_to_send(const char* text) { return ::strnlen(text, WIPC_MAX_MESSAGE + 1); }

/// Copies a text into the caller's buffer: pads a shorter text with zeros to the end, cuts a longer
/// one without a terminator. Returns the length copied.
int deliver(const char* text, char* buffer, int length) {
  std::strncpy(buffer, text, static_cast<std::size_t>(length));
  return static_cast<int>(::strnlen(text, static_cast<std::size_t>(length)));
}

}  // namespace
}  // namespace zelvan

using namespace zelvan;

int wipc_write(void* session, char* text) {
  const wipc_session* record = usable_session(session);
  if (record == nullptr || text == nullptr) return 0;
  const std::size_t length = length_to_send(text);
  const bool fits = length <= WIPC_MAX_MESSAGE;
  return send_text(record->sid, fits ? std::string_view(text, length) : text_too_long) >= 0;
}

int wipc_write_status(void* session, char* text) {
  const wipc_session* record = usable_session(session);
  if (record == nullptr) {
    wipc_print("Error: Cannot write status message to an invalid session\n");
    return 0;
  }
  if (text == nullptr) {
    wipc_print("Error: Cannot write invalid status message\n");
    return 0;
  }
  if (record->session_type == primary_end) return 0;
  const std::size_t length = length_to_send(text);
  if (length > WIPC_MAX_MESSAGE) {
    wipc_print(
        "Error: The status message cannot be written because it has exceeded the maximum length\n");
    return 0;
  }
  const std::string_view with_terminator(text, length + 1);
  if (send_text(record->status_sid, with_terminator) < 0) {
    wipc_print("Error: Cannot send status message\n");
    return 0;
  }
  return 1;
}

int wipc_read(void* session, char* buffer, int length) {
  wipc_session* record = usable_session(session);
  if (record == nullptr) {
    wipc_print("Error: Could not read socket for invalid session\n");
    return -1;
  }
  if (buffer == nullptr || length < 1) {
    wipc_print("Error: Could not read socket for invalid buffer\n");
    return 0;
  }
  HeapText text(wipc_dequeue(&record->data_head, &record->data_tail));
  if (text == nullptr) {
    if (wipc_fill_queues(record, record->sid) == 0) return 0;
    text.reset(wipc_dequeue(&record->data_head, &record->data_tail));
    if (text == nullptr) return 0;
  }
  if (record->session_type == secondary_end && text.get() == end_of_session) {
    send_text(record->sid, end_acknowledged);
    release_session(record);
    return -1;
  }
  return deliver(text.get(), buffer, length);
}

int wipc_read_status(void* session, char* buffer, int length) {
  wipc_session* record = usable_session(session);
  if (record == nullptr) {
    wipc_print("Error: Cannot read status message from an invalid session\n");
    return -1;
  }
  if (buffer == nullptr || length < 1) {
    wipc_print("Error: Cannot read status message from an invalid buffer\n");
    return 0;
  }
  if (record->session_type == secondary_end) return 0;
  HeapText text(wipc_dequeue(&record->status_head, &record->status_tail));
  if (text == nullptr) {
    if (wipc_poll_socket(record->status_sid) == 0) return 0;
    wipc_fill_queues(record, record->status_sid);
    text.reset(wipc_dequeue(&record->status_head, &record->status_tail));
    if (text == nullptr) return 0;
  }
  return deliver(text.get(), buffer, length);
}
