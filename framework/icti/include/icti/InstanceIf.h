// One managed object held in memory: its RDN ("<attribute>=<value>"), the
// distinguished name of its parent, its class, and its attributes by name.
// Its distinguished name is derived: "<rdn>,<parent name>", or the RDN alone
// without a parent. Names are written as DistinguishedName says: the RDN
// holds its value escaped, the RDN attribute the value itself.

#ifndef VOSK_ICTI_INSTANCE_IF_H
#define VOSK_ICTI_INSTANCE_IF_H

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "icti/AttributeInternalIf.h"

class InstanceIf {
 public:
  virtual ~InstanceIf() = default;

  // Destroys the attribute; false when there is none of that name.
  virtual bool eraseAttribute(const std::string& name) = 0;
  virtual std::string getParentName() const = 0;
  // All attributes in name order; the instance keeps ownership.
  virtual std::vector<std::pair<std::string, AttributeInternalIf*>> getAttributes() const = 0;
  // Null when absent.
  virtual AttributeInternalIf* getAttribute(const std::string& name) const = 0;
  // Creates an empty attribute of the type. False for an
  // unsupported type. When the name exists already, the existing attribute
  // stays, *created is set to null and the result is true. `created` may be
  // null.
  virtual bool addAttribute(const std::string& name, ValueType type, AttributeInternalIf** created = nullptr) = 0;
  virtual std::string getRdn() const = 0;
  // Renames the RDN attribute to the part of `rdn` before "=" and makes the
  // part after it (unescaped, see DistinguishedName) its value. False, and
  // nothing changed, when `rdn` is no single "<attribute>=<value>".
  virtual bool setRdn(const std::string& rdn) = 0;
  virtual std::string getLdn() const = 0;
  virtual void setParentName(const std::string& parentName) = 0;
};

#endif
