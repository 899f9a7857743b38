// Formats log and trace messages into a buffer that belongs to the calling
// thread. A thread may set a prefix (a schema thread sets its schema name);
// every later message of that thread then reads "<prefix>: <text>".
//
// The returned text stays valid until the next message of the same thread.
// Texts longer than the formatting area (1024 bytes) are cut.

#ifndef VOSK_COMMON_MESSAGE_FORMATTER_H
#define VOSK_COMMON_MESSAGE_FORMATTER_H

#include <cstdarg>
#include <cstddef>
#include <string>

class MessageFormatter {
 public:
  static constexpr size_t kPrefixLimit = 4096;
  static constexpr size_t kMessageArea = 1024;

  static const char* format(const char* fmt, ...) __attribute__((format(printf, 1, 2)));
  static const char* formatV(const char* fmt, va_list args);

  // Formats into a new string, without the thread's prefix: for texts that
  // are handed on rather than logged (a failure reason, say).
  static std::string plain(const char* fmt, ...) __attribute__((format(printf, 1, 2)));
  static std::string plainV(const char* fmt, va_list args);

  // A text that is already this thread's message is returned as it is;
  // any other text is copied in behind the prefix.
  static const char* copy(const char* text);

  // Starts every later message of this thread with "<prefix>: ".
  // An empty or null prefix removes it.
  static void setPrefix(const char* prefix);

  MessageFormatter() = delete;
};

#endif
