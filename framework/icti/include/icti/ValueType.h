// The value types of attributes. The codes are the node's own numbering of
// its value types (1 to 10): they appear in messages and traces, and a
// modification file names them by ValueText::typeName.

#ifndef VOSK_ICTI_VALUE_TYPE_H
#define VOSK_ICTI_VALUE_TYPE_H

#include <cstddef>
#include <cstdint>

enum class ValueType : uint32_t {
  kNone = 0,
  kInt32 = 1,
  kUint32 = 2,
  kInt64 = 3,
  kUint64 = 4,
  // A signed 64-bit count of nanoseconds.
  kTime = 5,
  // A distinguished name of at most 599 characters with a length field.
  kName = 6,
  kFloat = 7,
  kDouble = 8,
  kString = 9,
  // A byte buffer.
  kAny = 10,
};

// The most characters a name value keeps.
constexpr std::size_t kNameTextLimit = 599;

// The code as messages print it.
inline int codeOf(ValueType type) { return static_cast<int>(type); }

#endif
