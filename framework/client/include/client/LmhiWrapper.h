// The one way into the node's load-module handler (LMHI). It has no state;
// its operations are virtual so that a test can answer in the handler's place.

#ifndef VOSK_CLIENT_LMHI_WRAPPER_H
#define VOSK_CLIENT_LMHI_WRAPPER_H

#include <string>

#include "lmhi.h"

class LmhiWrapper {
 public:
  virtual ~LmhiWrapper();

  // Fills `result` with the load modules of `boardType` under `tag` and
  // returns the handler's code, 0 on success. The handler gets its own copies
  // of both texts. After success the answer belongs to the handler until
  // freeBuffers() hands it back.
  virtual int getLms(const std::string& boardType, const std::string& tag, LmhiLms* result);

  // Hands an answer of a successful getLms() back to the handler.
  virtual void freeBuffers(LmhiLms* result);
};

#endif
