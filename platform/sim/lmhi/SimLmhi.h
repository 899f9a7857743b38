// The return codes of the simulated load-module handler, besides the codes
// that VOSK_SIM_FAULTS injects.

#ifndef VOSK_SIM_SIM_LMHI_H
#define VOSK_SIM_SIM_LMHI_H

namespace simlmhi {

constexpr int kOk = 0;
// No folder $VOSK_SIM_ROOT/lmhi/<boardType>/<tag>.
constexpr int kNotFound = 1;
// A null argument, or a board type or tag that is not a plain folder name.
constexpr int kInvalidArgument = 2;
// VOSK_SIM_ROOT is unset.
constexpr int kNoNode = 3;
// A folder could not be read.
constexpr int kReadError = 4;

}  // namespace simlmhi

#endif
