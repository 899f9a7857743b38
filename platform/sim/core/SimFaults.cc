#include "SimFaults.h"

#include <csignal>
#include <cstdlib>
#include <memory>

#include "SimEnvironment.h"

namespace {

std::mutex g_instanceMutex;
std::unique_ptr<SimFaults> g_instance;

bool parseNumber(const std::string& text, long* value) {
  if (text.empty()) return false;
  char* end = nullptr;
  *value = std::strtol(text.c_str(), &end, 10);
  return *end == '\0';
}

}  // namespace

SimFaults& SimFaults::instance() {
  std::lock_guard<std::mutex> lock(g_instanceMutex);
  if (!g_instance) {
    g_instance = std::make_unique<SimFaults>(SimEnvironment::faults());
    g_instance->killAfterCalls_ = SimEnvironment::killAfter("VOSK_SIM_KILL_AFTER");
    g_instance->killAfterObjects_ = SimEnvironment::killAfter("VOSK_SIM_KILL_AFTER_OBJECTS");
    for (const std::string& item : g_instance->malformedItems()) {
      SimEnvironment::reportReason("VOSK_SIM_FAULTS", item, 0, "ignoring malformed item \"" + item + "\"");
    }
  }
  return *g_instance;
}

void SimFaults::reload() {
  std::lock_guard<std::mutex> lock(g_instanceMutex);
  g_instance.reset();
}

SimFaults::SimFaults(const std::string& faults) { parse(faults); }

void SimFaults::parse(const std::string& faults) {
  size_t start = 0;
  while (start <= faults.size()) {
    size_t end = faults.find(',', start);
    if (end == std::string::npos) end = faults.size();
    std::string text = faults.substr(start, end - start);
    start = end + 1;
    if (text.empty()) continue;

    size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0) {
      malformed_.push_back(text);
      continue;
    }
    Item item;
    std::string target = text.substr(0, equals);
    std::string result = text.substr(equals + 1);
    size_t at = target.find('@');
    item.call = target.substr(0, at);
    item.subject = at == std::string::npos ? "" : target.substr(at + 1);
    size_t plus = result.find('+');
    item.good = 0;
    bool ok = plus == std::string::npos || (parseNumber(result.substr(plus + 1), &item.good) && item.good >= 0);
    result = result.substr(0, plus);
    size_t times = result.find('x');
    long code = 0;
    item.remaining = -1;
    ok = ok && parseNumber(result.substr(0, times), &code) && code != 0;
    if (ok && times != std::string::npos) ok = parseNumber(result.substr(times + 1), &item.remaining);
    if (!ok || item.call.empty() || item.remaining == 0 || item.remaining < -1) {
      malformed_.push_back(text);
      continue;
    }
    item.code = static_cast<int>(code);
    items_.push_back(item);
  }
}

int SimFaults::inject(const char* call, const char* subject) {
  std::lock_guard<std::mutex> lock(mutex_);
  if (calls_++ == killAfterCalls_) kill();
  for (Item& item : items_) {
    if (item.call != call) continue;
    if (!item.subject.empty() && (subject == nullptr || item.subject != subject)) continue;
    if (item.remaining == 0) continue;
    if (item.good > 0) {
      --item.good;
      continue;
    }
    if (item.remaining > 0) --item.remaining;
    return item.code;
  }
  return 0;
}

bool SimFaults::objectWritten() {
  if (killAfterObjects_ < 0) return false;  // set before the instance is shared, never changed
  std::lock_guard<std::mutex> lock(mutex_);
  return ++objects_ == killAfterObjects_;
}

void SimFaults::kill() {
  std::raise(SIGKILL);
  std::abort();  // not reached: SIGKILL cannot be caught
}
