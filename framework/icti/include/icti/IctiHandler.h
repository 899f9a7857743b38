// One schema's session with the platform's IMM conversion tool.
//
// The schema driver calls init() (open the session, read the versions, learn
// the classes), lets the actions work on the instance groups (read from the
// old model on first request and cached here), and then exactly one of
// callFinalize(), writeIntroducedClasses() or writeCopyClasses(), each of
// which ends the session. On any failure that leaves the new model in doubt
// the handler asks the platform to fail the upgrade, which rolls the node
// back; failureCount() tells the driver whether that happened.
//
// A class whose group an action removed (deleted, or renamed away) stays
// removed: it is not read again, and it is neither written nor copied.
//
// Used by one schema thread only. Owns every cached group.

#ifndef VOSK_ICTI_ICTI_HANDLER_H
#define VOSK_ICTI_ICTI_HANDLER_H

#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "env/Env.h"
#include "icti/IctiHandlerIf.h"

class ImmRecords;
class InstanceGroup;

class IctiHandler : public IctiHandlerIf {
 public:
  // (class name, RDN attribute name) pairs, as found in the IMM class file.
  using ClassList = std::vector<std::pair<std::string, std::string>>;

  static constexpr int kInitAttempts = 3;
  static constexpr unsigned int kInitPauseSeconds = 5;
  static constexpr const char* kUnprefixedClass = "KmovENodeBFunction";

  // Talks to the conversion tool through `env`. `immNs` is the namespace
  // prefix of the schema's IMM class names.
  IctiHandler(Env& env, const std::string& schemaName, const std::string& immNs);
  ~IctiHandler() override;

  IctiHandler(const IctiHandler&) = delete;
  IctiHandler& operator=(const IctiHandler&) = delete;

  InstanceGroupIf* getInstanceGroup(const std::string& className, const std::string& prefix = "",
                                    bool usePrefix = false) override;
  InstanceIf* getTheOnlyInstance(const std::string& className, const std::string& prefix) override;
  InstanceGroupIf* addInstanceGroup(const std::string& className) override;
  bool removeInstanceGroup(const std::string& className) override;
  InstanceGroupIf* getInstanceGroupForLdn(const std::string& ldn) override;
  void failUpgrade(const char* message) override;
  bool isAlive() override;
  void setFailureContext(const std::string& context) override { failureContext_ = context; }
  // Any failure request is a rollback.
  int failureCount() const override { return failureCount_; }
  // Listed in the schema's class lists, or answered by the old model
  // (which the platform asks the new model for too).
  bool classDefined(const std::string& className) override;

  // Opens the session (three attempts while the tool answers "try again
  // later", 5 seconds apart), reads the schema's versions and records the
  // classes. False when the session could not be opened.
  [[nodiscard]] bool init(const ClassList& configClasses, const ClassList& rtpClasses);

  // The versions read by init() as "<version>_<release>_<correction>";
  // false when they could not be read.
  [[nodiscard]] bool getSchemaVersions(std::string& from, std::string& to) const;

  // The RDN attribute name of a configuration class; an unknown class is
  // recorded with an empty name.
  std::string getRdn(const std::string& className);

  // Runtime-persistent groups are written under this implementer; empty
  // (the default, cleared by init) writes them with the configuration classes.
  void setImplementerName(const std::string& implementerName);

  // Ends the session: the new model takes effect. False on failure.
  [[nodiscard]] bool callFinalize();
  // For a schema the upgrade introduces: writes every cached configuration
  // group, then finalizes. False when the write or the finalize failed; a
  // failed write leaves the session unfinalized.
  [[nodiscard]] bool writeIntroducedClasses();
  // The ordinary end: writes the cached groups, has the platform copy every
  // configuration class no action touched, writes runtime-persistent groups
  // under the implementer, then finalizes. False when any of these failed;
  // after a failed write or copy the session is not finalized.
  [[nodiscard]] bool writeCopyClasses();

 private:
  std::string immClassName(const std::string& className, const std::string& prefix, bool usePrefix);
  bool openSession();
  void readVersions();
  // The group read from the old model and cached; null on failure, with
  // the platform's result in `rc`.
  InstanceGroup* readInstanceGroup(const std::string& immName, SaAisErrorT* rc);
  // Adds the write record of `group`; when memory runs out, fails the
  // upgrade and gives false.
  bool built(ImmRecords& records, const InstanceGroup& group);
  // True for SA_AIS_OK; otherwise fails the upgrade with `failureFormat`
  // filled with `rc` and gives false.
  bool checked(SaAisErrorT rc, const char* failureFormat);
  void splitRuntimePersistentGroups();
  // The hand-over before the finalize of writeCopyClasses() and
  // writeIntroducedClasses(): true when everything was written (and
  // copied). The write records are freed on return, so the finalize does
  // not hold them too.
  bool handOverClasses();
  bool writeCachedGroups();

  Env& env_;
  const std::string schemaName_;
  const std::string immNs_;
  std::string implementerName_;
  SafcImmCtHandleT handle_ = 0;
  bool sessionOpen_ = false;
  SafcImmCtSchemaVersionT_2 fromVersion_{};
  SafcImmCtSchemaVersionT_2 toVersion_{};
  bool versionsRead_ = false;
  std::map<std::string, std::unique_ptr<InstanceGroup>> instanceGroupMap_;
  std::map<std::string, std::unique_ptr<InstanceGroup>> instanceGroupMapRTP_;
  std::map<std::string, std::string> configClasses_;
  std::map<std::string, std::string> rtpClasses_;
  // IMM names of the classes whose groups were removed.
  std::set<std::string> removedClasses_;
  // IMM names of the classes in the schema's class lists, and of those the
  // platform said no model defines.
  std::set<std::string> listedClasses_;
  std::set<std::string> undefinedClasses_;
  std::string failureContext_;
  int failureCount_ = 0;

  // Durations of the end operations' phases, for the timing report of
  // callFinalize().
  int tablesMs_ = 0;
  int writeMs_ = 0;
  int copyMs_ = 0;
  int introduceMs_ = 0;
  int writeCount_ = 0;
  int copyCount_ = 0;
  int rtpCount_ = 0;
};

#endif
