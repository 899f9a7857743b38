#include "common/MessageFormatter.h"

#include <cstdio>
#include <cstring>

namespace {

struct ThreadBuffer {
  // Prefix, ": ", then the message area.
  char text[MessageFormatter::kPrefixLimit + 2 + MessageFormatter::kMessageArea];
  size_t prefixLength = 0;
  // Arguments may point into `text` (a message passed on as "%s"), so the
  // message is formatted here first and then moved behind the prefix.
  char scratch[MessageFormatter::kMessageArea];
};

ThreadBuffer& threadBuffer() {
  thread_local ThreadBuffer buffer;
  return buffer;
}

const char* placeMessage(ThreadBuffer& b, const char* message, size_t length) {
  std::memmove(b.text + b.prefixLength, message, length);
  b.text[b.prefixLength + length] = '\0';
  return b.text;
}

}  // namespace

const char* MessageFormatter::format(const char* fmt, ...) {
  va_list args;
  va_start(args, fmt);
  const char* result = formatV(fmt, args);
  va_end(args);
  return result;
}

const char* MessageFormatter::formatV(const char* fmt, va_list args) {
  ThreadBuffer& b = threadBuffer();
  int n = std::vsnprintf(b.scratch, sizeof b.scratch, fmt, args);
  size_t length = n < 0 ? 0 : static_cast<size_t>(n);
  if (length >= sizeof b.scratch) length = sizeof b.scratch - 1;
  return placeMessage(b, b.scratch, length);
}

std::string MessageFormatter::plain(const char* fmt, ...) {
  va_list args;
  va_start(args, fmt);
  std::string text = plainV(fmt, args);
  va_end(args);
  return text;
}

std::string MessageFormatter::plainV(const char* fmt, va_list args) {
  va_list sizing;
  va_copy(sizing, args);
  int n = std::vsnprintf(nullptr, 0, fmt, sizing);
  va_end(sizing);
  std::string text(n > 0 ? static_cast<size_t>(n) : 0, '\0');
  if (n > 0) std::vsnprintf(text.data(), text.size() + 1, fmt, args);
  return text;
}

const char* MessageFormatter::copy(const char* text) {
  ThreadBuffer& b = threadBuffer();
  if (text == b.text) return text;
  if (text == nullptr) text = "";
  size_t length = strnlen(text, kMessageArea - 1);
  return placeMessage(b, text, length);
}

void MessageFormatter::setPrefix(const char* prefix) {
  ThreadBuffer& b = threadBuffer();
  size_t length = prefix == nullptr ? 0 : strnlen(prefix, kPrefixLimit);
  if (length == 0) {
    b.prefixLength = 0;
    b.text[0] = '\0';
    return;
  }
  std::memcpy(b.text, prefix, length);
  std::memcpy(b.text + length, ": ", 2);
  b.prefixLength = length + 2;
  b.text[b.prefixLength] = '\0';
}
