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
  // the schema's namespace + className. Null when it cannot be read, and for
  // a class whose group was removed (deleted or renamed away): such a class
  // is never read again.
  virtual InstanceGroupIf* getInstanceGroup(const std::string& className, const std::string& prefix = "",
                                            bool usePrefix = false) = 0;
  // The single instance of the class, or null when there is no group or it
  // does not hold exactly one instance.
  virtual InstanceIf* getTheOnlyInstance(const std::string& className, const std::string& prefix) = 0;
  // The group for a class that is to be created: an empty group when the
  // old model does not have the class (or it was removed), the old model's
  // group when it has the class without instances. Null when a group of
  // that name exists already or the old model has instances of the class:
  // those stay as they are, nothing is lost.
  virtual InstanceGroupIf* addInstanceGroup(const std::string& className) = 0;
  // Destroys the group; false when there is none. The class is then neither
  // written nor copied, unless it is added again.
  virtual bool removeInstanceGroup(const std::string& className) = 0;
  // The group of the class named by the first RDN of `ldn`.
  virtual InstanceGroupIf* getInstanceGroupForLdn(const std::string& ldn) = 0;
  // Logs the reason with the application's identity and asks the platform
  // to fail the upgrade, which rolls the node back. While a failure context
  // is set, it is added to the reason.
  virtual void failUpgrade(const char* message) = 0;
  virtual bool isAlive() = 0;
  // Where the work that may fail comes from (a modification file's place,
  // say); empty for none.
  virtual void setFailureContext(const std::string& context) = 0;
  // How many times the upgrade was asked to fail so far.
  virtual int failureCount() const = 0;
  // False for a class that neither the old model nor the new one defines
  // (an existing class without instances is defined).
  virtual bool classDefined(const std::string& className) = 0;
};

#endif
