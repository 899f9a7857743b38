#include "MockEnv.h"

#include "LogRecorder.h"

using testing::_;
using testing::DoAll;
using testing::Invoke;
using testing::Return;
using testing::SetArgPointee;

MockEnv::MockEnv() {
  testing::DefaultValue<SaAisErrorT>::Set(SA_AIS_OK);
  ON_CALL(*this, logInitialize(_, _, _)).WillByDefault(DoAll(SetArgPointee<0>(7), Return(SA_AIS_OK)));
  ON_CALL(*this, logStreamOpen(_, _, _, _, _, _)).WillByDefault(DoAll(SetArgPointee<5>(8), Return(SA_AIS_OK)));
  ON_CALL(*this, logWriteLogAsync(_, _, _, _)).WillByDefault(Invoke([](auto, auto, auto, const SaLogRecordT* r) {
    LogRecorder::installed().record(r);
    return SA_AIS_OK;
  }));
  ON_CALL(*this, sleepSeconds(_)).WillByDefault(Invoke([this](unsigned int seconds) {
    sleeps.push_back(seconds);
    unsigned int left = interruptions.empty() ? 0 : interruptions.front();
    if (!interruptions.empty()) interruptions.pop_front();
    return left;
  }));
}

std::optional<std::string> MockEnv::variable(const char* name) {
  auto found = variables.find(name);
  return found == variables.end() ? std::nullopt : std::optional<std::string>(found->second);
}
