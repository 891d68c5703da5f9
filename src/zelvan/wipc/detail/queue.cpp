#include <zelvan/detail/heap_text.h>
#include <zelvan/platform/sockets.h>
#include <zelvan/wipc/detail/queue.h>
#include <zelvan/wipc/session.h>

#include <cstring>
#include <memory>
#include <new>

namespace zelvan {
namespace {

/// Appends a string to the text. If it doesn't fit, the text becomes empty.
void join(char (&text)[WIPC_MAX_MESSAGE + 2], const char* string) {
  const std::size_t before = std::strlen(text);
  const std::size_t added = std::strlen(string);
  if (before + added < sizeof text) {
    std::memcpy(text + before, string, added + 1);
  } else {
    text[0] = '\0';
  }
}

void enqueue(const char* text, wipc_message** head, wipc_message** tail) {
  HeapText copy = heap_copy(text);
  wipc_message* message =
      copy != nullptr ? new (std::nothrow) wipc_message{copy.get(), nullptr, *tail} : nullptr;
  if (message == nullptr) {
    wipc_print("Could not allocate memory for message\n");
    return;
  }
  copy.release();  // now owned by the message
  (*tail != nullptr ? (*tail)->next : *head) = message;
  *tail = message;
}

}  // namespace

char* wipc_dequeue(wipc_message** head, wipc_message** tail) {
  const std::unique_ptr<wipc_message> oldest(*head);
  if (oldest == nullptr) return nullptr;
  *head = oldest->next;
  (*head != nullptr ? (*head)->prev : *tail) = nullptr;
  return oldest->text;
}

int wipc_fill_queues(wipc_session* session, int socket) {
  const bool is_status = socket == session->status_sid;
  wipc_message** head = is_status ? &session->status_head : &session->data_head;
  wipc_message** tail = is_status ? &session->status_tail : &session->data_tail;
  char chunk[WIPC_MAX_MESSAGE + 1];  // the last NUL stays, so that the end also ends a string
  const auto receive = [&] {
    std::memset(chunk, 0, sizeof chunk);
    return platform::recv(socket, chunk, WIPC_MAX_MESSAGE);
  };
  int length = receive();
  if (length < 1) return 0;
  int offset = 0;  // start of the next string in the chunk
  while (offset < length) {
    char message[WIPC_MAX_MESSAGE + 2];
    message[0] = '\0';
    join(message, chunk + offset);
    offset += static_cast<int>(std::strlen(chunk + offset)) + 1;
    // After 4000 bytes at once, or 3999 that don't end in a NUL, the last string may be cut off: it
    // can't be told from one that just ends there. So receive the next chunk, whose first string
    // continues this one.
    if (offset >= WIPC_MAX_MESSAGE) {
      length = receive();
      if (length > 0) {
        join(message, chunk);
        offset = static_cast<int>(std::strlen(chunk)) + 1;
      }
    }
    enqueue(message, head, tail);
  }
  return 1;
}

}  // namespace zelvan
