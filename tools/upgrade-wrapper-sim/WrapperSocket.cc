#include "WrapperSocket.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace wrappersim {

WrapperSocket::~WrapperSocket() {
  if (fd_ < 0) return;
  ::close(fd_);
  ::unlink(path_.c_str());
}

bool WrapperSocket::listen(const std::string& path, std::string* error) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.empty() || path.size() >= sizeof address.sun_path) {
    *error = "socket path '" + path + "' must have 1 to " + std::to_string(sizeof address.sun_path - 1) +
             " characters; choose a shorter one with --socket";
    return false;
  }
  std::memcpy(address.sun_path, path.c_str(), path.size() + 1);

  struct stat existing;
  if (::lstat(path.c_str(), &existing) == 0) {
    if (!S_ISSOCK(existing.st_mode)) {
      *error = path + " exists and is no socket";
      return false;
    }
    ::unlink(path.c_str());
  }
  int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
  if (fd < 0) {
    *error = std::string("socket: ") + std::strerror(errno);
    return false;
  }
  if (::bind(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 || ::listen(fd, 8) != 0) {
    *error = "cannot listen on " + path + ": " + std::strerror(errno);
    ::close(fd);
    return false;
  }
  fd_ = fd;
  path_ = path;
  return true;
}

bool WrapperSocket::acceptPending() {
  int connection = ::accept4(fd_, nullptr, nullptr, SOCK_CLOEXEC);
  if (connection < 0) return false;
  ::close(connection);
  return true;
}

}  // namespace wrappersim
