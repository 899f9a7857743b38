#include "env/Env.h"

Env::~Env() = default;

int Env::millisecondsBetween(const struct timespec& start, const struct timespec& end) {
  double ms = static_cast<double>(end.tv_sec - start.tv_sec) * 1000.0 +
              static_cast<double>(end.tv_nsec - start.tv_nsec) / 1000000.0;
  return static_cast<int>(ms);
}
