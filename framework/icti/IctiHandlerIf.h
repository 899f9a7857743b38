// What the modification-file parser and the actions may ask of the schema's
// conversion session: the instance groups of the old model (read once and
// cached), new and removed groups, and the request to fail the upgrade.

#ifndef VOSK_ICTI_ICTI_HANDLER_IF_H
#define VOSK_ICTI_ICTI_HANDLER_IF_H

#include <string>

#include "icti/InstanceGroupIf.h"

class IctiHandlerIf {
 public:
  virtual ~IctiHandlerIf() = default;

  // The group of the class, read from the old model on first request.
  // The IMM class name is `prefix` + className when usePrefix is set, else
  // the schema's namespace + className. Null when it cannot be read.
  virtual InstanceGroupIf* getInstanceGroup(const std::string& className, const std::string& prefix = "",
                                            bool usePrefix = false) = 0;
  // The single instance of the class, or null when there is no group or it
  // does not hold exactly one instance.
  virtual InstanceIf* getTheOnlyInstance(const std::string& className, const std::string& prefix) = 0;
  // Creates an empty group for a class the old model does not have. Null
  // when a group of that name exists already (it stays as it is).
  virtual InstanceGroupIf* addInstanceGroup(const std::string& className) = 0;
  // Destroys the group; false when there is none.
  virtual bool removeInstanceGroup(const std::string& className) = 0;
  // The group of the class named by the first RDN of `ldn`.
  virtual InstanceGroupIf* getInstanceGroupForLdn(const std::string& ldn) = 0;
  // Logs the reason with the application's identity and asks the platform
  // to fail the upgrade, which rolls the node back.
  virtual void failUpgrade(const char* message) = 0;
  virtual bool isAlive() = 0;
};

#endif
