#include "SimImmValueCodec.h"

#include <cctype>
#include <charconv>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "SimBase64.h"
#include "safcImmCt.h"

namespace {

struct TypeInfo {
  int type;
  const char* name;
  size_t size;
};

const TypeInfo kTypes[] = {
    {SA_IMM_ATTR_SAINT32T, "SA_INT32_T", sizeof(SaInt32T)},   {SA_IMM_ATTR_SAUINT32T, "SA_UINT32_T", sizeof(SaUint32T)},
    {SA_IMM_ATTR_SAINT64T, "SA_INT64_T", sizeof(SaInt64T)},   {SA_IMM_ATTR_SAUINT64T, "SA_UINT64_T", sizeof(SaUint64T)},
    {SA_IMM_ATTR_SATIMET, "SA_TIME_T", sizeof(SaTimeT)},      {SA_IMM_ATTR_SANAMET, "SA_NAME_T", sizeof(SaNameT)},
    {SA_IMM_ATTR_SAFLOATT, "SA_FLOAT_T", sizeof(SaFloatT)},   {SA_IMM_ATTR_SADOUBLET, "SA_DOUBLE_T", sizeof(SaDoubleT)},
    {SA_IMM_ATTR_SASTRINGT, "SA_STRING_T", sizeof(SaStringT)}, {SA_IMM_ATTR_SAANYT, "SA_ANY_T", sizeof(SaAnyT)},
};

// An integer in decimal.
template <typename Integer>
bool decimal(Integer value, std::string* text) {
  char buffer[24];
  const std::to_chars_result end = std::to_chars(buffer, buffer + sizeof buffer, value);
  text->assign(buffer, end.ptr);
  return true;
}

const TypeInfo* info(int type) {
  for (const TypeInfo& t : kTypes) {
    if (t.type == type) return &t;
  }
  return nullptr;
}

bool notA(int type, const std::string& text, std::string* why) {
  *why = "value \"" + text + "\" is not a " + SimImmValueCodec::nameOfType(type);
  return false;
}

// The whole text is the value, without surrounding blanks or a plus sign.
bool startsCleanly(const std::string& text) {
  return !text.empty() && !std::isspace(static_cast<unsigned char>(text[0])) && text[0] != '+';
}

// Integers are read as the node's loader reads them, as C does in base 0:
// "0x" starts a hexadecimal number, another leading "0" an octal one.
bool parseSigned(const std::string& text, long long min, long long max, long long* value) {
  if (!startsCleanly(text)) return false;
  char* end = nullptr;
  errno = 0;
  *value = std::strtoll(text.c_str(), &end, 0);
  return *end == '\0' && errno == 0 && *value >= min && *value <= max;
}

bool parseUnsigned(const std::string& text, unsigned long long max, unsigned long long* value) {
  if (text.empty() || !(text[0] >= '0' && text[0] <= '9')) return false;
  char* end = nullptr;
  errno = 0;
  *value = std::strtoull(text.c_str(), &end, 0);
  return *end == '\0' && errno == 0 && *value <= max;
}

bool parseDouble(const std::string& text, double* value) {
  if (!startsCleanly(text)) return false;
  char* end = nullptr;
  *value = std::strtod(text.c_str(), &end);
  return *end == '\0';
}

int hexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

bool parseHex(const std::string& text, SaAnyT* any, SimImmArena& arena) {
  if (text.size() % 2 != 0) return false;
  any->bufferSize = text.size() / 2;
  any->bufferAddr = arena.allocateArray<SaUint8T>(any->bufferSize);
  for (size_t i = 0; i < any->bufferSize; ++i) {
    int high = hexDigit(text[2 * i]);
    int low = hexDigit(text[2 * i + 1]);
    if (high < 0 || low < 0) return false;
    any->bufferAddr[i] = static_cast<SaUint8T>(high * 16 + low);
  }
  return true;
}

// The shortest of %.*g that reads back as the same number.
template <typename Float>
std::string formatFloat(Float value, int maxDigits) {
  char buffer[64];
  for (int digits = 6; digits <= maxDigits; ++digits) {
    std::snprintf(buffer, sizeof buffer, "%.*g", digits, static_cast<double>(value));
    if (static_cast<Float>(std::strtod(buffer, nullptr)) == value) break;
  }
  return buffer;
}

template <typename T>
T read(const void* value) {
  T result;
  std::memcpy(&result, value, sizeof result);
  return result;
}

}  // namespace

int SimImmValueCodec::typeOfName(const std::string& name) {
  for (const TypeInfo& t : kTypes) {
    if (name == t.name) return t.type;
  }
  return 0;
}

const char* SimImmValueCodec::nameOfType(int type) {
  const TypeInfo* t = info(type);
  return t != nullptr ? t->name : nullptr;
}

size_t SimImmValueCodec::valueSize(int type) {
  const TypeInfo* t = info(type);
  return t != nullptr ? t->size : 0;
}

bool SimImmValueCodec::parse(int type, const std::string& text, void* out, SimImmArena& arena, std::string* why) {
  long long s = 0;
  unsigned long long u = 0;
  double d = 0;
  switch (type) {
    case SA_IMM_ATTR_SAINT32T:
      if (!parseSigned(text, INT32_MIN, INT32_MAX, &s)) return notA(type, text, why);
      *static_cast<SaInt32T*>(out) = static_cast<SaInt32T>(s);
      return true;
    case SA_IMM_ATTR_SAUINT32T:
      if (!parseUnsigned(text, UINT32_MAX, &u)) return notA(type, text, why);
      *static_cast<SaUint32T*>(out) = static_cast<SaUint32T>(u);
      return true;
    case SA_IMM_ATTR_SAINT64T:
    case SA_IMM_ATTR_SATIMET:
      if (!parseSigned(text, INT64_MIN, INT64_MAX, &s)) return notA(type, text, why);
      *static_cast<SaInt64T*>(out) = s;
      return true;
    case SA_IMM_ATTR_SAUINT64T:
      if (!parseUnsigned(text, UINT64_MAX, &u)) return notA(type, text, why);
      *static_cast<SaUint64T*>(out) = u;
      return true;
    case SA_IMM_ATTR_SAFLOATT:
      if (!parseDouble(text, &d)) return notA(type, text, why);
      *static_cast<SaFloatT*>(out) = static_cast<SaFloatT>(d);
      return true;
    case SA_IMM_ATTR_SADOUBLET:
      if (!parseDouble(text, &d)) return notA(type, text, why);
      *static_cast<SaDoubleT*>(out) = d;
      return true;
    case SA_IMM_ATTR_SANAMET: {
      if (text.size() >= SA_MAX_NAME_LENGTH) {
        *why = "name \"" + text.substr(0, 40) + "...\" is longer than " + std::to_string(SA_MAX_NAME_LENGTH - 1);
        return false;
      }
      SaNameT* name = static_cast<SaNameT*>(out);
      name->length = static_cast<SaUint16T>(text.size());
      std::memcpy(name->value, text.data(), text.size());
      return true;
    }
    case SA_IMM_ATTR_SASTRINGT:
      *static_cast<SaStringT*>(out) = arena.copy(text);
      return true;
    case SA_IMM_ATTR_SAANYT:
      if (!parseHex(text, static_cast<SaAnyT*>(out), arena)) return notA(type, text, why);
      return true;
  }
  *why = "unknown value type " + std::to_string(type);
  return false;
}

bool SimImmValueCodec::parse(int type, const SimImmValue& value, void* out, SimImmArena& arena, std::string* why) {
  if (!value.base64) return parse(type, value.text, out, arena, why);
  std::string bytes;
  if (!SimBase64::decode(value.text, &bytes)) {
    *why = "value \"" + value.text.substr(0, 40) + "\" is marked xs:base64Binary but is no base64";
    return false;
  }
  switch (type) {
    case SA_IMM_ATTR_SAANYT: {
      SaAnyT* any = static_cast<SaAnyT*>(out);
      any->bufferSize = bytes.size();
      any->bufferAddr = arena.allocateArray<SaUint8T>(bytes.size());
      std::memcpy(any->bufferAddr, bytes.data(), bytes.size());
      return true;
    }
    case SA_IMM_ATTR_SASTRINGT:
    case SA_IMM_ATTR_SANAMET:
      if (bytes.find('\0') != std::string::npos) {
        *why = "base64 value \"" + value.text.substr(0, 40) + "\" holds a zero byte, which a " + nameOfType(type) +
               " cannot hold";
        return false;
      }
      return parse(type, bytes, out, arena, why);
  }
  *why = std::string("a ") + (nameOfType(type) != nullptr ? nameOfType(type) : "value of this type") +
         " cannot be given in base64";
  return false;
}

bool SimImmValueCodec::format(int type, const void* value, std::string* text, std::string* why) {
  switch (type) {
    case SA_IMM_ATTR_SAINT32T:
      return decimal(read<SaInt32T>(value), text);
    case SA_IMM_ATTR_SAUINT32T:
      return decimal(read<SaUint32T>(value), text);
    case SA_IMM_ATTR_SAINT64T:
    case SA_IMM_ATTR_SATIMET:
      return decimal(read<SaInt64T>(value), text);
    case SA_IMM_ATTR_SAUINT64T:
      return decimal(read<SaUint64T>(value), text);
    case SA_IMM_ATTR_SAFLOATT:
      *text = formatFloat(read<SaFloatT>(value), 9);
      return true;
    case SA_IMM_ATTR_SADOUBLET:
      *text = formatFloat(read<SaDoubleT>(value), 17);
      return true;
    case SA_IMM_ATTR_SANAMET: {
      const SaNameT* name = static_cast<const SaNameT*>(value);
      size_t limit = name->length < SA_MAX_NAME_LENGTH ? name->length : SA_MAX_NAME_LENGTH;
      const char* chars = reinterpret_cast<const char*>(name->value);
      text->assign(chars, strnlen(chars, limit));
      return true;
    }
    case SA_IMM_ATTR_SASTRINGT: {
      const char* string = read<SaStringT>(value);
      if (string == nullptr) {
        *why = "null SaStringT value";
        return false;
      }
      *text = string;
      return true;
    }
    case SA_IMM_ATTR_SAANYT: {
      const SaAnyT* any = static_cast<const SaAnyT*>(value);
      if (any->bufferSize > 0 && any->bufferAddr == nullptr) {
        *why = "SaAnyT value without buffer";
        return false;
      }
      static const char kDigits[] = "0123456789abcdef";
      text->resize(2 * any->bufferSize);
      for (SaSizeT i = 0; i < any->bufferSize; ++i) {
        (*text)[2 * i] = kDigits[any->bufferAddr[i] >> 4];
        (*text)[2 * i + 1] = kDigits[any->bufferAddr[i] & 15];
      }
      return true;
    }
    default:
      *why = "unknown value type " + std::to_string(type);
      return false;
  }
}
