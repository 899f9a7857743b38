#include "actions/ValueText.h"

#include <cctype>
#include <cerrno>
#include <climits>
#include <cstdlib>

#include "safcImmCt.h"

namespace {

// The longest name text a name record keeps.
constexpr size_t kMaxNameText = 599;

// strto* accept leading blanks and, for the unsigned types, a minus sign
// that wraps around; neither is a value a model author means.
bool startsLikeNumber(const std::string& text, bool signAllowed) {
  size_t first = (signAllowed && !text.empty() && (text[0] == '-' || text[0] == '+')) ? 1 : 0;
  if (!signAllowed && !text.empty() && text[0] == '+') first = 1;
  return first < text.size() && std::isdigit(static_cast<unsigned char>(text[first]));
}

bool parseDouble(const std::string& text, double& value) {
  if (text.empty() || std::isspace(static_cast<unsigned char>(text[0]))) return false;
  char* tail = nullptr;
  errno = 0;
  value = std::strtod(text.c_str(), &tail);
  return *tail == '\0' && errno != ERANGE;
}

}  // namespace

bool ValueText::parseSigned(const std::string& text, long long& value) {
  if (!startsLikeNumber(text, true)) return false;
  char* tail = nullptr;
  errno = 0;
  value = std::strtoll(text.c_str(), &tail, 10);
  return *tail == '\0' && errno != ERANGE;
}

bool ValueText::parseUnsigned(const std::string& text, unsigned long long& value) {
  if (!startsLikeNumber(text, false)) return false;
  char* tail = nullptr;
  errno = 0;
  value = std::strtoull(text.c_str(), &tail, 10);
  return *tail == '\0' && errno != ERANGE;
}

bool ValueText::fits(uint32_t type, const std::string& text) {
  long long signedValue = 0;
  unsigned long long unsignedValue = 0;
  double doubleValue = 0;
  switch (type) {
    case SA_IMM_ATTR_SAINT32T:
      return parseSigned(text, signedValue) && signedValue >= INT_MIN && signedValue <= INT_MAX;
    case SA_IMM_ATTR_SAINT64T:
      return parseSigned(text, signedValue);
    case SA_IMM_ATTR_SAUINT32T:
      return parseUnsigned(text, unsignedValue) && unsignedValue <= UINT_MAX;
    case SA_IMM_ATTR_SAUINT64T:
      return parseUnsigned(text, unsignedValue);
    case SA_IMM_ATTR_SADOUBLET:
      return parseDouble(text, doubleValue);
    case SA_IMM_ATTR_SASTRINGT:
      return true;
    case SA_IMM_ATTR_SANAMET:
      return text.size() <= kMaxNameText;
    default:
      return false;
  }
}

bool ValueText::isZero(uint32_t type, const std::string& text) {
  long long signedValue = 0;
  unsigned long long unsignedValue = 0;
  double doubleValue = 0;
  if (isDouble(type)) return parseDouble(text, doubleValue) && doubleValue == 0.0;
  if (parseSigned(text, signedValue)) return signedValue == 0;
  return parseUnsigned(text, unsignedValue) && unsignedValue == 0;
}

const char* ValueText::typeName(uint32_t type) {
  switch (type) {
    case SA_IMM_ATTR_SAINT32T:
      return "SA_INT32_T";
    case SA_IMM_ATTR_SAUINT32T:
      return "SA_UINT32_T";
    case SA_IMM_ATTR_SAINT64T:
      return "SA_INT64_T";
    case SA_IMM_ATTR_SAUINT64T:
      return "SA_UINT64_T";
    case SA_IMM_ATTR_SANAMET:
      return "SA_NAME_T";
    case SA_IMM_ATTR_SADOUBLET:
      return "SA_DOUBLE_T";
    case SA_IMM_ATTR_SASTRINGT:
      return "SA_STRING_T";
    case SA_IMM_ATTR_SAANYT:
      return "SA_ANY_T";
    default:
      return "unknown";
  }
}

unsigned ValueText::integerWidth(uint32_t type) {
  switch (type) {
    case SA_IMM_ATTR_SAINT32T:
    case SA_IMM_ATTR_SAUINT32T:
      return 32;
    case SA_IMM_ATTR_SAINT64T:
    case SA_IMM_ATTR_SAUINT64T:
      return 64;
    default:
      return 0;
  }
}

bool ValueText::isDouble(uint32_t type) { return type == SA_IMM_ATTR_SADOUBLET; }
