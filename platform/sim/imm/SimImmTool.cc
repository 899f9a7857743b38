#include "SimImmTool.h"

#include <fcntl.h>
#include <libxml/parser.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "SimEnvironment.h"
#include "SimFaults.h"
#include "SimImmVersions.h"

namespace {

const char kNoNode[] = "VOSK_SIM_ROOT is not set: there is no simulated node";

SaAisErrorT refuse(SaAisErrorT code, const std::string& reason, std::string* why) {
  *why = reason;
  return code;
}

bool exists(const std::string& path) {
  struct stat st;
  return ::stat(path.c_str(), &st) == 0;
}

// The reason as one line: line ends inside become blanks, trailing ones go.
std::string oneLine(const char* text) {
  std::string line = text;
  for (char& c : line) {
    if (c == '\n' || c == '\r') c = ' ';
  }
  while (!line.empty() && line.back() == ' ') line.pop_back();
  return line;
}

SaAisErrorT moveInto(const std::string& from, const std::string& folder, const std::string& name,
                     std::string* moved, std::string* why) {
  if (!SimEnvironment::makeDirectories(folder)) return refuse(SA_AIS_ERR_NO_RESOURCES, "cannot create " + folder, why);
  *moved = folder + "/" + name;
  if (std::rename(from.c_str(), moved->c_str()) != 0) {
    return refuse(SA_AIS_ERR_NO_RESOURCES, "cannot move " + from + " to " + *moved + ": " + std::strerror(errno), why);
  }
  return SA_AIS_OK;
}

}  // namespace

SimImmTool& SimImmTool::instance() {
  // libxml2 sets up its global state on first use, which is not safe on
  // two threads at once: sessions read model files on any thread, so the
  // library is set up here, once, before any session exists.
  static const bool xmlReady = (xmlInitParser(), true);
  (void)xmlReady;
  static SimImmTool tool;
  return tool;
}

SaAisErrorT SimImmTool::initialize(SafcImmCtHandleT* handle, SaUint32T mode) {
  return attempt("safcImmCtInitialize_2", "Initialize", "", [&](std::string* why) {
    std::string root = SimEnvironment::root();
    if (handle == nullptr || mode > 1) {
      return refuse(SA_AIS_ERR_INVALID_PARAM, "no handle or mode " + std::to_string(mode) + " (0 or 1 expected)", why);
    }
    if (root.empty()) return refuse(SA_AIS_ERR_LIBRARY, kNoNode, why);
    if (!exists(root)) return refuse(SA_AIS_ERR_LIBRARY, "VOSK_SIM_ROOT " + root + " does not exist", why);
    auto session = std::make_shared<SimImmSession>(SimImmNode::forRoot(root), SimEnvironment::out());
    std::lock_guard<std::mutex> lock(sessionsMutex_);
    *handle = nextHandle_++;
    sessions_[*handle] = session;
    return SA_AIS_OK;
  });
}

SaAisErrorT SimImmTool::run(const char* call, const char* faultName, SafcImmCtHandleT handle, const char* subject,
                            const Work& work) {
  std::shared_ptr<SimImmSession> session = find(handle);
  std::string subjectText = subject != nullptr ? subject : session ? session->schemaName() : "";
  return attempt(call, faultName, subjectText, [&](std::string* why) {
    if (!session) return refuse(SA_AIS_ERR_BAD_HANDLE, "unknown session handle " + std::to_string(handle), why);
    return work(*session, why);
  });
}

SaAisErrorT SimImmTool::attempt(const char* call, const char* faultName, const std::string& subject,
                                const std::function<SaAisErrorT(std::string* why)>& work) {
  std::string why;
  SaAisErrorT rc = static_cast<SaAisErrorT>(SimFaults::instance().inject(faultName, subject.c_str()));
  if (rc != 0) {
    why = "injected by VOSK_SIM_FAULTS";
  } else {
    rc = work(&why);
  }
  if (rc != SA_AIS_OK) SimEnvironment::reportReason(call, subject, rc, why);
  return rc;
}

SaAisErrorT SimImmTool::readSchemaVersion(SafcImmCtHandleT handle, const char* schemaName,
                                          SafcImmCtSchemaVersionT_2* from, SafcImmCtSchemaVersionT_2* to) {
  return run("safcImmCtReadSchemaVersion_2", "ReadSchemaVersion", handle, schemaName != nullptr ? schemaName : "",
             [&](SimImmSession& session, std::string* why) {
               if (schemaName == nullptr || schemaName[0] == '\0' || std::strchr(schemaName, '/') != nullptr ||
                   from == nullptr || to == nullptr) {
                 return refuse(SA_AIS_ERR_INVALID_PARAM, "no schema name, a name with '/', or no version records",
                               why);
               }
               std::string current = session.schemaName();
               if (!current.empty() && current != schemaName) {
                 return refuse(SA_AIS_ERR_BAD_OPERATION, "the session already converts schema " + current, why);
               }
               switch (SimImmVersions::find(session.node().versionsPath(), schemaName, from, to, why)) {
                 case SimImmVersions::Result::kUnreadable:
                   return SA_AIS_ERR_FAILED_OPERATION;
                 case SimImmVersions::Result::kNotListed:
                   return SA_AIS_ERR_NOT_EXIST;
                 case SimImmVersions::Result::kFound:
                   break;
               }
               if (!claim(handle, schemaName)) {
                 return refuse(SA_AIS_ERR_EXIST, "another open session converts schema " + std::string(schemaName),
                               why);
               }
               return SA_AIS_OK;
             });
}

SaAisErrorT SimImmTool::failUpgrade(SafcImmCtHandleT handle, const char* reason) {
  const char* call = "safcImmCtFailUpgrade";
  auto request = [&](const std::string& outDir, std::string* why) {
    if (reason == nullptr) return refuse(SA_AIS_ERR_INVALID_PARAM, "no reason", why);
    return rollback(outDir, reason, why);
  };
  if (handle != kNoSession) {
    return run(call, "FailUpgrade", handle, nullptr,
               [&](SimImmSession& session, std::string* why) { return request(session.outDir(), why); });
  }
  // An upgrader that could not open a session (a malformed class file, a
  // tool that stays unavailable) must still be able to ask for the rollback.
  return attempt(call, "FailUpgrade", "", [&](std::string* why) {
    std::string outDir = SimEnvironment::out();
    if (outDir.empty()) return refuse(SA_AIS_ERR_LIBRARY, kNoNode, why);
    return request(outDir, why);
  });
}

SaAisErrorT SimImmTool::finalize(SafcImmCtHandleT handle) {
  return run("safcImmCtFinalize", "Finalize", handle, nullptr, [&](SimImmSession& session, std::string* why) {
    std::string schemaName = session.schemaName();
    if (schemaName.empty()) {
      if (session.hasContent()) {
        return refuse(SA_AIS_ERR_BAD_OPERATION,
                      "the session has a model but no schema to name it: read the schema version first", why);
      }
      close(handle);
      return SA_AIS_OK;
    }
    if (!SimEnvironment::makeDirectories(session.outDir())) {
      return refuse(SA_AIS_ERR_NO_RESOURCES, "cannot create " + session.outDir(), why);
    }
    std::string temp = session.outDir() + "/." + schemaName + ".xml." + std::to_string(::getpid()) + "." +
                       std::to_string(handle) + ".tmp";
    SaAisErrorT rc = session.writeModel(temp, why);
    if (rc == SA_AIS_OK) rc = commit(session.outDir(), temp, schemaName, why);
    if (rc != SA_AIS_OK) {
      std::remove(temp.c_str());
      return rc;
    }
    close(handle);
    return SA_AIS_OK;
  });
}

std::shared_ptr<SimImmSession> SimImmTool::find(SafcImmCtHandleT handle) {
  std::lock_guard<std::mutex> lock(sessionsMutex_);
  auto found = sessions_.find(handle);
  return found != sessions_.end() ? found->second : nullptr;
}

bool SimImmTool::claim(SafcImmCtHandleT handle, const std::string& schemaName) {
  std::lock_guard<std::mutex> lock(sessionsMutex_);
  auto self = sessions_.find(handle);
  if (self == sessions_.end()) return true;  // finalized meanwhile: nothing left to claim for
  const std::shared_ptr<SimImmSession>& session = self->second;
  for (const auto& entry : sessions_) {
    if (entry.first != handle && entry.second->outDir() == session->outDir() &&
        entry.second->schemaName() == schemaName) {
      return false;
    }
  }
  session->setSchemaName(schemaName);
  return true;
}

void SimImmTool::close(SafcImmCtHandleT handle) {
  std::lock_guard<std::mutex> lock(sessionsMutex_);
  sessions_.erase(handle);
}

SaAisErrorT SimImmTool::commit(const std::string& outDir, const std::string& temp, const std::string& schemaName,
                               std::string* why) {
  std::lock_guard<std::mutex> lock(runsMutex_);
  Run& run = runs_[outDir];
  bool discarded = run.rolledBack || exists(outDir + "/rollback");
  std::string target;
  SaAisErrorT rc = moveInto(temp, outDir + (discarded ? "/discarded" : "/model"), schemaName + ".xml", &target, why);
  if (rc == SA_AIS_OK && !discarded) run.finalized.push_back(schemaName + ".xml");
  return rc;
}

SaAisErrorT SimImmTool::rollback(const std::string& outDir, const char* reason, std::string* why) {
  std::lock_guard<std::mutex> lock(runsMutex_);
  if (!SimEnvironment::makeDirectories(outDir)) return refuse(SA_AIS_ERR_NO_RESOURCES, "cannot create " + outDir, why);
  std::string path = outDir + "/rollback";
  int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
  if (file < 0) return refuse(SA_AIS_ERR_NO_RESOURCES, "cannot open " + path + ": " + std::strerror(errno), why);
  // One write of the whole line: a process killed meanwhile leaves the line whole or absent.
  std::string line = oneLine(reason) + "\n";
  bool written = ::write(file, line.data(), line.size()) == static_cast<ssize_t>(line.size());
  written = ::close(file) == 0 && written;
  if (!written) return refuse(SA_AIS_ERR_NO_RESOURCES, "cannot write " + path, why);

  Run& run = runs_[outDir];
  run.rolledBack = true;
  for (const std::string& name : run.finalized) {
    std::string moved;
    if (SaAisErrorT rc = moveInto(outDir + "/model/" + name, outDir + "/discarded", name, &moved, why);
        rc != SA_AIS_OK) {
      return rc;
    }
  }
  run.finalized.clear();
  return SA_AIS_OK;
}
