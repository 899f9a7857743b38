#include "client/WrapperSignal.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>

#include "common/Log.h"

bool WrapperSignal::expandPath(const std::string& path, std::string* expanded) {
  const size_t limit = sizeof(sockaddr_un::sun_path) - 1;
  expanded->clear();
  for (size_t i = 0; i < path.size(); ++i) {
    if (path[i] == '%') {
      if (i + 1 >= path.size() || path[i + 1] != '%') return false;
      ++i;
    }
    if (expanded->size() < limit) expanded->push_back(path[i]);
  }
  return true;
}

bool WrapperSignal::send(const std::string& socketPath) {
  int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
  if (fd < 0) {
    TAV_LOG(INFO_ABN, "Failed to create socket when connecting to %s", socketPath.c_str());
    return false;
  }
  sockaddr_un address;
  std::memset(&address, 0, sizeof address);
  address.sun_family = AF_UNIX;
  std::string path;
  bool connected = false;
  if (expandPath(socketPath, &path)) {
    std::memcpy(address.sun_path, path.data(), path.size());
    connected = ::connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
  }
  if (!connected) {
    // The socket stays open on purpose: the process sleeps for ever anyway.
    TAV_LOG(INFO_ABN, "Failed to connect to %s", socketPath.c_str());
    return false;
  }
  ::close(fd);
  return true;
}
