// All instances of one IMM class, in memory, in a stable order: first the
// order the platform delivered them in, then instances added later. The
// group owns its instances; lookups by distinguished name are exact and the
// first match wins.

#ifndef VOSK_ICTI_INSTANCE_GROUP_IF_H
#define VOSK_ICTI_INSTANCE_GROUP_IF_H

#include <functional>
#include <string>
#include <vector>

#include "icti/InstanceIf.h"

class InstanceGroupIf {
 public:
  virtual ~InstanceGroupIf() = default;

  // The class name without the namespace prefix.
  virtual std::string getClassName() const = 0;
  // Calls `step` for every instance in order, also after one fails; the
  // result is the AND of all results (true for an empty group).
  virtual bool forEachInstance(const std::function<bool(InstanceIf&)>& step) = 0;
  virtual std::vector<InstanceIf*> getInstances() const = 0;
  // The instances whose parent name equals `parentLdn`, in group order.
  virtual std::vector<InstanceIf*> getChildInstances(const std::string& parentLdn) const = 0;
  virtual InstanceIf* getInstance(const std::string& ldn) const = 0;
  virtual InstanceIf* getFirstInstance() const = 0;
  virtual unsigned int getNumberOfInstances() const = 0;
  // Unlinks the instance without destroying it, so that pointers actions
  // still hold stay valid until the end of the run.
  virtual bool eraseInstance(const std::string& ldn) = 0;
  // Takes ownership and appends; returns the new count.
  virtual unsigned int addInstance(InstanceIf* instance) = 0;
  // Unlinks the instance and hands ownership to the caller; an instance not
  // in the group is ignored.
  virtual void detachInstance(InstanceIf* instance) = 0;
  // True when the first instance's RDN begins with "id=".
  virtual bool isStructGroup() const = 0;
  // Creates "<rdn attribute>=<rdnId>" below `parentLdn` (an empty parent
  // makes a root instance). Null when that instance exists already.
  virtual InstanceIf* createInstance(const std::string& parentLdn, const std::string& rdnId, bool isStruct,
                                     const std::string& structType) = 0;
};

#endif
