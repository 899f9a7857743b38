#include "SimImmObjectCodec.h"

#include <cstdint>
#include <cstring>

namespace {

void putNumber(uint32_t n, std::string* out) { out->append(reinterpret_cast<const char*>(&n), sizeof n); }

void putText(const std::string& text, std::string* out) {
  putNumber(static_cast<uint32_t>(text.size()), out);
  out->append(text);
}

uint32_t getNumber(const std::string& in, size_t* pos) {
  uint32_t n;
  std::memcpy(&n, in.data() + *pos, sizeof n);
  *pos += sizeof n;
  return n;
}

void getText(const std::string& in, size_t* pos, std::string* text) {
  uint32_t size = getNumber(in, pos);
  text->assign(in, *pos, size);
  *pos += size;
}

}  // namespace

void SimImmObjectCodec::encode(const SimImmObject& object, std::string* out) {
  putText(object.dn, out);
  putNumber(static_cast<uint32_t>(object.line), out);
  putNumber(static_cast<uint32_t>(object.attrs.size()), out);
  for (const SimImmAttrValues& attr : object.attrs) {
    putText(attr.name, out);
    putNumber(static_cast<uint32_t>(attr.values.size()), out);
    for (const SimImmValue& value : attr.values) {
      putText(value.text, out);
      out->push_back(value.base64 ? 1 : 0);
    }
  }
}

void SimImmObjectCodec::decodeNext(const std::string& in, size_t* pos, SimImmObject* object) {
  getText(in, pos, &object->dn);
  object->line = static_cast<int>(getNumber(in, pos));
  object->attrs.resize(getNumber(in, pos));
  for (SimImmAttrValues& attr : object->attrs) {
    getText(in, pos, &attr.name);
    attr.values.resize(getNumber(in, pos));
    for (SimImmValue& value : attr.values) {
      getText(in, pos, &value.text);
      value.base64 = in[(*pos)++] != 0;
    }
  }
}
