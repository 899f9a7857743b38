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
  for (char c : text)
    out += c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '>' ? "&gt;" : c == '"' ? "&quot;" : std::string(1, c);
  return out;
}

void attributeDefinition(std::ostream& out, const char* element, const std::string& name, const std::string& type,
                         bool multiValue) {
  out << "    <" << element << "><name>" << name << "</name><type>" << type << "</type><category>SA_CONFIG</category>"
      << (element == std::string("rdn") ? "<flag>SA_INITIALIZED</flag>" : "<flag>SA_WRITABLE</flag>")
      << (multiValue ? "<flag>SA_MULTI_VALUE</flag>" : "") << "</" << element << ">\n";
}

// The text of IMM XML holding `classes` and then `objects`.
std::string immXml(const std::vector<ImmClass>& classes, const std::vector<ImmObject>& objects) {
  std::ostringstream out;
  for (const ImmClass& cls : classes) {
    out << "  <class name=\"" << cls.name << "\">\n    <category>SA_CONFIG</category>\n";
    attributeDefinition(out, "rdn", cls.rdnName(), "SA_STRING_T", false);
    for (const ImmAttr& attr : cls.attrs) attributeDefinition(out, "attr", attr.name, attr.type, attr.multiValue);
    out << "  </class>\n";
  }
  for (const ImmObject& object : objects) {
    out << "  <object class=\"" << object.className << "\">\n    <dn>" << escaped(object.dn) << "</dn>\n";
    for (const auto& [name, values] : object.attrs) {
      out << "    <attr><name>" << name << "</name>";
      for (const std::string& value : values) out << "<value>" << escaped(value) << "</value>";
      out << "</attr>\n";
    }
    out << "  </object>\n";
  }
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<imm:IMM-contents xmlns:imm=\"http://www.saforum.org/IMMSchema\">\n" +
         out.str() + "</imm:IMM-contents>\n";
}

}  // namespace

std::string ImmClass::rdnName() const {
  if (!rdn.empty()) return rdn;
  std::string derived = name;
  if (!derived.empty()) derived[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(derived[0])));
  return derived + "Id";
}

std::vector<ImmAttr> immAttrs(const std::string& text) {
  std::vector<ImmAttr> attrs;
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    const size_t colon = word.find(':');
    const bool multiValue = word.back() == '*';
    attrs.push_back({word.substr(0, colon), word.substr(colon + 1, word.size() - colon - 1 - multiValue), multiValue});
  }
  return attrs;
}

SchemaSetup sampleSchema(const std::string& name, const std::string& from, const std::string& to) {
  ImmClass root{name, {{"userLabel", "SA_STRING_T"}}};
  ImmClass port{name + "Port", {{"mtu", "SA_UINT32_T"}, {"weight", "SA_INT64_T"}, {"tags", "SA_STRING_T", true}}};
  SchemaSetup schema{name, from, to, {root, port}, {}};
  if (from == kNewSchemaVersion) return schema;
  const std::string rootDn = root.rdnName() + "=1";
  schema.oldObjects = {
      {root.name, rootDn, {{"userLabel", {"root of " + name}}}},
      {port.name, port.rdnName() + "=1," + rootDn, {{"mtu", {"1500"}}, {"weight", {"-7"}}, {"tags", {"a", "b"}}}},
      {port.name, port.rdnName() + "=2," + rootDn, {{"mtu", {"9000"}}, {"weight", {"12345678901"}}}},
  };
  return schema;
}

NodeBuilder::NodeBuilder(std::string root) : root_(std::move(root)) { writeListings(); }

NodeBuilder& NodeBuilder::add(const SchemaSetup& schema) { return add(std::vector<SchemaSetup>{schema}); }

NodeBuilder& NodeBuilder::add(const std::vector<SchemaSetup>& schemas) {
  for (const SchemaSetup& schema : schemas) {
    auto same = std::find_if(schemas_.begin(), schemas_.end(),
                             [&](const SchemaSetup& added) { return added.name == schema.name; });
    if (same != schemas_.end()) {
      *same = schema;
    } else {
      schemas_.push_back(schema);
    }
    writeSchemaFiles(schema);
  }
  writeListings();
  return *this;
}

void NodeBuilder::writeSchemaFiles(const SchemaSetup& schema) {
  const std::string classes = immXml(schema.newClasses.empty() ? schema.classes : schema.newClasses, {});
  write("package/share/models/" + schema.name + "/imm/" + schema.name + "_imm_classes.xml", classes);
  if (schema.newClassesOnNode) {
    write("node/imm/new/" + schema.name + ".xml", classes);
  } else {
    remove("node/imm/new/" + schema.name + ".xml");
  }
  if (schema.from != kNewSchemaVersion) {
    write("node/imm/old/" + schema.name + ".xml", immXml(schema.classes, schema.oldObjects));
  }
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
  std::string mos;
  for (const std::string& name : classNames) mos += mo(name, "");
  return modifications(mos);
}

std::string modifications(const std::string& mos) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<modifications>\n" + mos + "</modifications>\n";
}

std::string mo(const std::string& className, const std::string& actions) {
  return "  <Mo name=\"" + escaped(className) + "\">" + actions + "</Mo>\n";
}

std::string moAction(const std::string& name, const std::string& args, const std::string& operation) {
  ArgList list;
  std::istringstream pairs(args);
  for (std::string pair; pairs >> pair;) {
    const size_t equals = pair.find('=');
    list.emplace_back(pair.substr(0, equals), pair.substr(equals + 1));
  }
  return moAction(name, list, operation);
}

std::string moAction(const std::string& name, const ArgList& args, const std::string& operation) {
  std::string xml = "<MoAction name=\"" + escaped(name) + "\">";
  for (const auto& [argName, value] : args) {
    xml += "<Arg name=\"" + escaped(argName) + "\" value=\"" + escaped(value) + "\"/>";
  }
  return xml + (operation.empty() ? "" : "<Operation " + operation + "/>") + "</MoAction>";
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
    versions << schema.name << " " << schema.from << " " << schema.to << "\n";
  }
  appdata << "</voskOamUpgradeModLm>\n";
  write("package/appdata/voskOamUpgradeModLm.xml", appdata.str());
  write("node/versions", versions.str());
}

}  // namespace e2e
