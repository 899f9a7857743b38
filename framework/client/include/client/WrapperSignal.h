// Tells the upgrade wrapper that every schema was upgraded: a connect to its
// UNIX-domain stream socket, closed again at once. No byte is sent.

#ifndef VOSK_CLIENT_WRAPPER_SIGNAL_H
#define VOSK_CLIENT_WRAPPER_SIGNAL_H

#include <string>

class WrapperSignal {
 public:
  // The socket path as it goes into the address: the path is read as a
  // format without arguments, so "%%" stands for "%". Any other conversion
  // is refused (false), never expanded. The result is cut to the 107
  // characters the address holds.
  static bool expandPath(const std::string& path, std::string* expanded);

  // Connects to the socket and closes the connection. A failure is reported
  // ("Failed to create socket when connecting to %s", "Failed to connect to
  // %s") and otherwise ignored. True when the connect succeeded.
  static bool send(const std::string& socketPath);

  WrapperSignal() = delete;
};

#endif
