// The wrapper's listening UNIX-domain stream socket. The upgrader signals
// success by a bare connect; nothing is ever read or written.

#ifndef VOSK_TOOLS_WRAPPER_SOCKET_H
#define VOSK_TOOLS_WRAPPER_SOCKET_H

#include <string>

namespace wrappersim {

class WrapperSocket {
 public:
  WrapperSocket() = default;
  // Closes the socket and removes its path.
  ~WrapperSocket();
  WrapperSocket(const WrapperSocket&) = delete;
  WrapperSocket& operator=(const WrapperSocket&) = delete;

  // Binds and listens at `path`, replacing a stale socket there; false with a
  // reason when the path is too long, is taken by something else, or the
  // socket cannot be set up.
  bool listen(const std::string& path, std::string* error);

  // Readable when a connect is waiting.
  int fd() const { return fd_; }

  // Takes a waiting connection, if any, and closes it; never blocks. True
  // when a connect had been made.
  bool acceptPending();

 private:
  int fd_ = -1;
  std::string path_;
};

}  // namespace wrappersim

#endif
