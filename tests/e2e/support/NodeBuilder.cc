#include "NodeBuilder.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace e2e {
namespace {

namespace fs = std::filesystem;

const char* kNewSchemaVersion = "0_0_0";

std::string escaped(const std::string& text) {
  std::string out;
  for (char c : text) {
    switch (c) {
      case '&': out += "&amp;"; break;
      case '<': out += "&lt;"; break;
      case '>': out += "&gt;"; break;
      case '"': out += "&quot;"; break;
      default: out += c;
    }
  }
  return out;
}

void attributeDefinition(std::ostream& out, const char* element, const std::string& name, const std::string& type,
                         const std::string& category, const std::vector<const char*>& flags) {
  out << "    <" << element << "><name>" << name << "</name><type>" << type << "</type><category>" << category
      << "</category>";
  for (const char* flag : flags) out << "<flag>" << flag << "</flag>";
  out << "</" << element << ">\n";
}

}  // namespace

std::string ImmClass::rdnName() const {
  std::string rdn = name;
  if (!rdn.empty()) rdn[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(rdn[0])));
  return rdn + "Id";
}

NodeBuilder::NodeBuilder(std::string root) : root_(std::move(root)) { writeListings(); }

NodeBuilder& NodeBuilder::add(const SchemaSetup& schema) {
  auto same = std::find_if(schemas_.begin(), schemas_.end(),
                           [&](const SchemaSetup& added) { return added.name == schema.name; });
  if (same != schemas_.end()) {
    *same = schema;
  } else {
    schemas_.push_back(schema);
  }
  writeListings();
  const std::string classes = immXml(schema.classes, {});
  write("package/share/models/" + schema.name + "/imm/" + schema.name + "_imm_classes.xml", classes);
  write("node/imm/new/" + schema.name + ".xml", classes);
  if (schema.from != kNewSchemaVersion) {
    write("node/imm/old/" + schema.name + ".xml", immXml(schema.classes, schema.oldObjects));
  }
  return *this;
}

NodeBuilder& NodeBuilder::addXml(const std::string& name, const std::string& from, const std::string& to,
                                 const std::string& oldModel, const std::string& newClasses) {
  SchemaSetup listing;
  listing.name = name;
  listing.from = from;
  listing.to = to;
  add(listing);
  write("package/share/models/" + name + "/imm/" + name + "_imm_classes.xml", newClasses);
  write("node/imm/new/" + name + ".xml", newClasses);
  if (from != kNewSchemaVersion) write("node/imm/old/" + name + ".xml", oldModel);
  return *this;
}

std::string NodeBuilder::modificationFile(const std::string& schema, const std::string& loadModule,
                                          const std::string& fileName, const std::string& content) {
  std::string relative = "node/lmhi/" + schema + "/modification_files/" + loadModule + "/" + fileName;
  write(relative, content);
  return root_ + "/" + relative;
}

NodeBuilder& NodeBuilder::remove(const std::string& relative) {
  fs::remove(fs::path(root_) / relative);
  return *this;
}

std::string NodeBuilder::readingModificationFile(const std::vector<std::string>& classNames) {
  std::ostringstream out;
  out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<modifications>\n";
  for (const std::string& name : classNames) out << "  <Mo name=\"" << escaped(name) << "\"/>\n";
  out << "</modifications>\n";
  return out.str();
}

std::string NodeBuilder::immDocument(const std::string& body) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<imm:IMM-contents xmlns:imm=\"http://www.saforum.org/IMMSchema\">\n" +
         body + "</imm:IMM-contents>\n";
}

std::string NodeBuilder::immXml(const std::vector<ImmClass>& classes, const std::vector<ImmObject>& objects) {
  std::ostringstream out;
  for (const ImmClass& cls : classes) {
    const bool runtime = cls.category == "SA_RUNTIME";
    out << "  <class name=\"" << cls.name << "\">\n    <category>" << cls.category << "</category>\n";
    attributeDefinition(out, "rdn", cls.rdnName(), "SA_STRING_T", cls.category,
                        {runtime ? "SA_PERSISTENT" : "SA_INITIALIZED"});
    for (const ImmAttr& attr : cls.attrs) {
      std::vector<const char*> flags = {runtime ? "SA_PERSISTENT" : "SA_WRITABLE"};
      if (attr.multiValue) flags.push_back("SA_MULTI_VALUE");
      attributeDefinition(out, "attr", attr.name, attr.type, cls.category, flags);
    }
    out << "  </class>\n";
  }
  for (const ImmObject& object : objects) {
    out << "  <object class=\"" << object.className << "\">\n    <dn>" << escaped(object.dn) << "</dn>\n";
    for (const auto& attr : object.attrs) {
      out << "    <attr><name>" << attr.first << "</name>";
      for (const std::string& value : attr.second) out << "<value>" << escaped(value) << "</value>";
      out << "</attr>\n";
    }
    out << "  </object>\n";
  }
  return immDocument(out.str());
}

void NodeBuilder::write(const std::string& relative, const std::string& content) const {
  fs::path file = fs::path(root_) / relative;
  fs::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary) << content;
}

void NodeBuilder::writeListings() const {
  std::ostringstream appdata;
  std::ostringstream versions;
  appdata << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<voskOamUpgradeModLm>\n";
  for (const SchemaSetup& schema : schemas_) {
    appdata << "  <lmlist boardType=\"" << escaped(schema.name) << "\"/>\n";
    if (schema.inVersionsFile) versions << schema.name << " " << schema.from << " " << schema.to << "\n";
  }
  appdata << "</voskOamUpgradeModLm>\n";
  write("package/appdata/voskOamUpgradeModLm.xml", appdata.str());
  write("node/versions", versions.str());
}

}  // namespace e2e
