// The names of attributes, each kept once for the life of the process. An
// attribute holds a pointer to its name, not a copy: a class of a million
// instances keeps each of its attribute names once, and taking a name costs
// no reference counting. Attribute names are the vocabulary of the schemas,
// so the set stays small. Instances keep their class name here too, for the
// same reasons.
//
// Safe to use from every thread; a thread takes a lock only the first time
// it asks for a name, so actions going through a million instances on
// several schema threads at once do not wait for each other.

#ifndef VOSK_ICTI_ATTRIBUTE_NAME_H
#define VOSK_ICTI_ATTRIBUTE_NAME_H

#include <string>
#include <string_view>

class AttributeName {
 public:
  // The one copy of `text`, valid until the process ends.
  static const std::string* of(std::string_view text);
};

#endif
