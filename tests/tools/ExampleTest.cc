// The bundled example package and node must stay consistent with each other
// and with the IMM XML shape the simulated node reads, or `make demo` shows a
// broken upgrade instead of the upgrader's work.

#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/tree.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

const std::string kNode = std::string(EXAMPLES_DIR) + "/node";
const std::string kPackage = std::string(EXAMPLES_DIR) + "/package";

struct ImmClass {
  std::string category, rdn;
  std::map<std::string, std::string> attrTypes;
};
struct ImmObject {
  std::string className, dn;
  std::vector<std::pair<std::string, std::vector<std::string>>> attrs;
};
struct ImmModel {
  std::map<std::string, ImmClass> classes;
  std::vector<ImmObject> objects;
};

std::string name(xmlNode* node) { return reinterpret_cast<const char*>(node->name); }

// Takes over a string libxml2 allocated.
std::string taken(xmlChar* value) {
  std::string result = value != nullptr ? reinterpret_cast<const char*>(value) : "";
  xmlFree(value);
  return result;
}
std::string text(xmlNode* node) { return taken(xmlNodeGetContent(node)); }
std::string property(xmlNode* node, const char* attribute) { return taken(xmlGetProp(node, BAD_CAST attribute)); }

std::vector<xmlNode*> children(xmlNode* node, const char* element = nullptr) {
  std::vector<xmlNode*> result;
  for (xmlNode* child = node->children; child != nullptr; child = child->next) {
    if (child->type == XML_ELEMENT_NODE && (element == nullptr || name(child) == element)) result.push_back(child);
  }
  return result;
}

std::string childText(xmlNode* node, const char* element) {
  auto found = children(node, element);
  return found.empty() ? "" : text(found[0]);
}

// Reads one IMM XML file into `model`, checking the element order the
// simulated node expects.
void readImm(const std::string& path, ImmModel* model) {
  xmlDoc* doc = xmlReadFile(path.c_str(), nullptr, XML_PARSE_NONET);
  ASSERT_NE(nullptr, doc) << path;
  xmlNode* root = xmlDocGetRootElement(doc);
  EXPECT_EQ("IMM-contents", name(root)) << path;
  EXPECT_TRUE(root->ns != nullptr && xmlStrEqual(root->ns->href, BAD_CAST "http://www.saforum.org/IMMSchema") &&
              xmlStrEqual(root->ns->prefix, BAD_CAST "imm"))
      << path;
  bool objectSeen = false;
  for (xmlNode* element : children(root)) {
    if (name(element) == "class") {
      EXPECT_FALSE(objectSeen) << path << ": class after object";
      ImmClass& c = model->classes[property(element, "name")];
      c.category = childText(element, "category");
      c.rdn = childText(children(element, "rdn").at(0), "name");
      for (xmlNode* attr : children(element, "attr")) c.attrTypes[childText(attr, "name")] = childText(attr, "type");
      continue;
    }
    ASSERT_EQ("object", name(element)) << path;
    objectSeen = true;
    auto parts = children(element);
    ASSERT_FALSE(parts.empty());
    EXPECT_EQ("dn", name(parts[0])) << path << ": dn must come first";
    ImmObject object{property(element, "class"), text(parts[0]), {}};
    for (xmlNode* attr : children(element, "attr")) {
      std::vector<std::string> values;
      for (xmlNode* value : children(attr, "value")) values.push_back(text(value));
      EXPECT_FALSE(values.empty()) << object.dn << " " << childText(attr, "name");
      object.attrs.emplace_back(childText(attr, "name"), values);
    }
    model->objects.push_back(object);
  }
  xmlFreeDoc(doc);
}

// The regular files below `folder`, none when it does not exist.
std::vector<std::string> files(const std::string& folder) {
  std::vector<std::string> result;
  std::error_code absent;
  for (const auto& entry : fs::recursive_directory_iterator(folder, fs::directory_options::none, absent)) {
    if (entry.is_regular_file()) result.push_back(entry.path().string());
  }
  return result;
}

ImmModel readFolder(const std::string& folder) {
  ImmModel model;
  for (const std::string& file : files(folder)) readImm(file, &model);
  return model;
}

// Schema -> from and to version, as the node's versions file lists them.
std::map<std::string, std::pair<std::string, std::string>> versions() {
  std::map<std::string, std::pair<std::string, std::string>> result;
  std::ifstream in(kNode + "/versions");
  for (std::string schema, from, to; in >> schema;) {
    if (schema[0] == '#') {
      std::getline(in, schema);
    } else if (in >> from >> to) {
      result[schema] = {from, to};
    }
  }
  return result;
}

std::vector<std::string> modificationFiles(const std::string& schema) {
  return files(kNode + "/lmhi/" + schema + "/modification_files");
}

bool valueFits(const std::string& type, const std::string& value) {
  if (type == "SA_STRING_T" || type == "SA_NAME_T") return true;
  if (type == "SA_ANY_T") return value.size() % 2 == 0 && value.find_first_not_of("0123456789abcdef") == std::string::npos;
  char* end = nullptr;
  errno = 0;
  long long number = type == "SA_DOUBLE_T" ? 0 : std::strtoll(value.c_str(), &end, 10);
  if (type == "SA_DOUBLE_T") std::strtod(value.c_str(), &end);
  if (value.empty() || *end != '\0' || errno != 0) return false;
  if (type == "SA_INT32_T") return number >= INT_MIN && number <= INT_MAX;
  if (type == "SA_UINT32_T") return number >= 0 && number <= static_cast<long long>(UINT_MAX);
  return type == "SA_INT64_T" || type == "SA_DOUBLE_T" || (type == "SA_UINT64_T" && number >= 0);
}

TEST(ExampleTest, EverySchemaHasItsImmFileVersionsAndModificationFiles) {
  std::set<std::string> schemas;
  xmlDoc* appdata = xmlReadFile((kPackage + "/appdata/voskOamUpgradeModLm.xml").c_str(), nullptr, 0);
  ASSERT_NE(nullptr, appdata);
  for (xmlNode* list : children(xmlDocGetRootElement(appdata), "lmlist")) schemas.insert(property(list, "boardType"));
  xmlFreeDoc(appdata);
  ASSERT_EQ((std::set<std::string>{"Equipment", "RadioNode", "Transport"}), schemas);
  auto listed = versions();
  std::set<std::string> kinds;
  for (const std::string& schema : schemas) {
    std::vector<std::string> immFiles;
    for (const std::string& file : files(kPackage + "/share")) {
      if (fs::path(file).filename().string().find(schema) != std::string::npos) immFiles.push_back(file);
    }
    ASSERT_EQ(1u, immFiles.size()) << schema;
    EXPECT_NE(std::string::npos, immFiles[0].find("/imm/" + schema + "_imm")) << immFiles[0];

    ASSERT_EQ(1u, listed.count(schema)) << schema;
    auto [from, to] = listed[schema];
    std::vector<std::string> files = modificationFiles(schema);
    if (from == to) {
      kinds.insert("same");
    } else if (from == "0_0_0") {
      kinds.insert("new");
      for (const std::string& file : files) EXPECT_EQ(std::string::npos, file.find("modification_0_0_0")) << file;
    } else {
      // The chain the upgrader's path calculator will walk.
      size_t steps = 0;
      for (std::string current = from; current != to && steps < files.size(); ++steps) {
        auto next = std::find_if(files.begin(), files.end(), [&](const std::string& f) {
          return f.find("/modification_" + current + "_to_") != std::string::npos;
        });
        ASSERT_NE(files.end(), next) << schema << " has no file from " << current;
        size_t start = next->find("_to_") + 4;
        current = next->substr(start, next->find(".xml") - start);
      }
      EXPECT_EQ(2u, steps) << schema;
      kinds.insert("conversion");
    }
  }
  EXPECT_EQ((std::set<std::string>{"conversion", "new", "same"}), kinds);
}

TEST(ExampleTest, OldModelObjectsFitTheirClasses) {
  ImmModel old = readFolder(kNode + "/imm/old");
  ASSERT_GE(old.objects.size(), 200u);
  std::set<std::string> dns;
  for (const ImmObject& object : old.objects) {
    EXPECT_TRUE(dns.insert(object.dn).second) << "duplicate " << object.dn;
    auto found = old.classes.find(object.className);
    ASSERT_NE(old.classes.end(), found) << object.dn;
    EXPECT_EQ(0u, object.dn.find(found->second.rdn + "=")) << object.dn;
    size_t comma = object.dn.find(',');
    EXPECT_TRUE(comma == std::string::npos || dns.count(object.dn.substr(comma + 1)) == 1) << "parent of " << object.dn;
    for (const auto& [attr, values] : object.attrs) {
      auto type = found->second.attrTypes.find(attr);
      ASSERT_NE(found->second.attrTypes.end(), type) << object.dn << " " << attr;
      for (const std::string& value : values) EXPECT_TRUE(valueFits(type->second, value)) << object.dn << " " << value;
    }
  }
  for (const ImmObject& object : old.objects) {
    for (const auto& [attr, values] : object.attrs) {
      if (old.classes[object.className].attrTypes[attr] != "SA_NAME_T") continue;
      for (const std::string& value : values) EXPECT_EQ(1u, dns.count(value)) << object.dn << " " << attr;
    }
  }
  EXPECT_EQ(1, std::count_if(old.classes.begin(), old.classes.end(),
                             [](const auto& c) { return c.second.category == "SA_RUNTIME"; }));
}

// The modification files rename, drop and add classes and attributes; what an
// old class keeps under its own name keeps its type. They only name classes of
// the old model.
TEST(ExampleTest, NewClassesMatchThePackageAndModificationFilesNameOldClasses) {
  ImmModel old = readFolder(kNode + "/imm/old");
  ImmModel fresh = readFolder(kNode + "/imm/new");
  ImmModel package = readFolder(kPackage + "/share");
  ASSERT_EQ(fresh.classes.size(), package.classes.size());
  for (const auto& [className, c] : package.classes) {
    ASSERT_EQ(1u, fresh.classes.count(className)) << className;
    EXPECT_EQ(c.attrTypes, fresh.classes[className].attrTypes) << className;
  }
  EXPECT_TRUE(fresh.objects.empty());
  size_t kept = 0;
  for (const auto& [className, c] : old.classes) {
    auto newClass = fresh.classes.find(className);
    if (newClass == fresh.classes.end()) continue;
    ++kept;
    for (const auto& [attr, type] : c.attrTypes) {
      auto newAttr = newClass->second.attrTypes.find(attr);
      bool dropped = newAttr == newClass->second.attrTypes.end();
      EXPECT_EQ(type, dropped ? type : newAttr->second) << className << "." << attr;
    }
  }
  EXPECT_GT(kept, old.classes.size() / 2);

  size_t mos = 0;
  for (const auto& [schema, range] : versions()) {
    for (const std::string& file : modificationFiles(schema)) {
      xmlDoc* doc = xmlReadFile(file.c_str(), nullptr, 0);
      ASSERT_NE(nullptr, doc) << file;
      for (xmlNode* mo : children(xmlDocGetRootElement(doc), "Mo")) {
        EXPECT_EQ(1u, old.classes.count(property(mo, "name"))) << file << " " << property(mo, "name");
        ++mos;
      }
      xmlFreeDoc(doc);
    }
  }
  EXPECT_GE(mos, 4u);
}

}  // namespace
