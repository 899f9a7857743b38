// Reads one IMM XML file as a stream, never as a whole document: class
// definitions and objects are handed to callbacks one at a time, so a dump
// of a million objects takes the memory of one object.
//
// Accepted shape: root imm:IMM-contents (namespace
// http://www.saforum.org/IMMSchema); `class` elements (attribute `name`;
// children `category`, `rdn`, `attr`, where `rdn` and `attr` have `name`,
// `type`, `category`, `flag`* and `attr` an optional `default-value`), then
// `object` elements (attribute `class`; children `dn` and `attr` with `name`
// and `value`*, a value in base64 when marked xsi:type="xs:base64Binary").
// An attribute given twice in an object has the values of both, with a
// warning. Other elements, comments and attributes are skipped. A class
// after an object, a missing name, dn or type, or an unknown type name make
// the file malformed.
// A text may be of any size; nothing outside the file (DTD, external entity,
// network) is loaded. Lines are the file's own, however many it has.

#ifndef VOSK_SIM_SIM_IMM_DUMP_READER_H
#define VOSK_SIM_SIM_IMM_DUMP_READER_H

#include <functional>
#include <string>
#include <vector>

#include "SimImmClass.h"
#include "SimImmObject.h"

struct _xmlTextReader;

class SimImmDumpReader {
 public:
  struct Handler {
    // Each class definition; returning false stops the reading.
    std::function<bool(SimImmClass&&)> onClass;
    // Decides, before an object is parsed, whether to hand it over; unset:
    // every object.
    std::function<bool(const std::string& className)> wantObject;
    // Each wanted object; returning false stops the reading. Unset: the
    // reading stops at the first object (a pass over the definitions only).
    std::function<bool(SimImmObject&&)> onObject;
    // Each thing a node's loader takes but that is likely a mistake (an
    // attribute given twice in an object), with the file; unset: none told.
    std::function<void(const std::string& path, const std::string& warning)> onWarning;
  };

  // Reads `path` through `handler`. False when the file cannot be read or is
  // malformed; error() then tells where and why. Stopping early is no error.
  bool read(const std::string& path, const Handler& handler);

  const std::string& error() const { return error_; }

 private:
  bool readContents(const Handler& handler);
  bool readClass(SimImmClass* cls);
  bool readAttrDef(SimImmAttrDef* def);
  bool readObject(const std::string& className, const Handler& handler, SimImmObject* object);
  bool readObjectAttr(SimImmAttrValues* attr);
  // Whether the value element the reader stands on is marked
  // xsi:type="xs:base64Binary".
  bool isBase64Value();
  // Calls `child` with the local name of each child element of the element
  // the reader stands on; `child` consumes the whole child element.
  bool forEachChild(const std::function<bool(const std::string&)>& child);
  bool readText(std::string* text);
  bool skipElement();
  // Moves to the next node, noting its line.
  bool next();
  void noteLine();
  // The line of the node the reader stands on (the parser itself reads ahead).
  int currentLine();
  bool fail(const std::string& why);
  std::string attribute(const char* name);

  static constexpr int kLastShortLine = 65535;

  _xmlTextReader* reader_ = nullptr;
  int line_ = 0;                // of the node the reader stands on
  int textLine_ = 0;            // where the last text ended
  std::vector<int> openLines_;  // of the elements open around the reader
  std::string path_;
  std::string error_;
  std::string parserError_;
  bool stopped_ = false;
};

#endif
