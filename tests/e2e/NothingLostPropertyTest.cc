// Nothing is lost: for each seed, a generated old model with values of all
// ten IMM types at their extremes, and a chain of one or two generated
// modification files, go through a whole run. A small model in the test
// applies each action's effect as the actions' documentation states it; the
// new model the node wrote must hold exactly that, every value that no action
// names bit for bit. A chain with a deliberate mistake must fail cleanly.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "NodeBuilder.h"
#include "TempDir.h"
#include "WholeRun.h"

namespace e2e {
namespace {

using Values = std::vector<std::string>;

// The ten value types (SA_ANY_T first), with texts at their extremes as IMM XML writes them.
const std::map<std::string, Values>& samples() {
  static const std::map<std::string, Values> kSamples = {
      {"SA_INT32_T", {"-2147483648", "2147483647", "0", "-1", "42"}},
      {"SA_UINT32_T", {"0", "4294967295", "1", "3000000000"}},
      {"SA_INT64_T", {"-9223372036854775808", "9223372036854775807", "0", "-1"}},
      {"SA_UINT64_T", {"0", "18446744073709551615", "9223372036854775808"}},
      {"SA_TIME_T", {"0", "9223372036854775807", "1700000000123456789", "-1"}},
      {"SA_NAME_T",
       {"rootId=1", "midId=a\\,b,rootId=1", "back\\slash\\", "ünï,cödé", "", std::string(595, 'n') + "\\,x,"}},
      {"SA_FLOAT_T", {"0.1", "1.4e-45", "3.40282347e+38", "-0", "nan", "123456789.123456789", "-1.5"}},
      {"SA_DOUBLE_T", {"0.1", "123456789.123456789", "1e-300", "4.9e-324", "1.7976931348623157e+308", "-0", "nan"}},
      {"SA_STRING_T", {"", "  lead and trail  ", "&<>\"'", "ünïcödé ✓ 日本語", "a,b\\c", "back\\"}},
      {"SA_ANY_T", {"00", "ff", "00ff00", "deadbeef", "", "0123456789abcdef"}}};
  return kSamples;
}

// RDN values: inside a dn, a comma is written "\," and a backslash "\\" when a
// comma or backslash follows it or it ends the value; any other backslash stands for itself.
const Values kRdnValues = {"a,b", "x\\y", "end\\", "a\\,b", "p\\\\q", " sp ", "é,ñ", "q&<>\"'", "k=v"};

std::string escapedRdnValue(const std::string& value) {
  std::string out;
  for (size_t i = 0; i < value.size(); ++i) {
    const bool pair = i + 1 == value.size() || value[i + 1] == ',' || value[i + 1] == '\\';
    out += value[i] == ',' ? "\\," : value[i] == '\\' && pair ? "\\\\" : std::string(1, value[i]);
  }
  return out;
}

// Whether two texts of one type are the same value: integers as numbers,
// floats and doubles bit for bit, names, strings and bytes byte for byte.
bool sameValue(const std::string& type, const std::string& a, const std::string& b) {
  const bool real = type == "SA_FLOAT_T" || type == "SA_DOUBLE_T", isUnsigned = type.find("UINT") != std::string::npos;
  if (!real && type.find("INT") == std::string::npos && type != "SA_TIME_T") return a == b;
  // The bits of the value a text stands for; none when the text is no number of the type.
  auto bits = [&](const std::string& text) -> std::optional<uint64_t> {
    if (text.empty()) return std::nullopt;
    const bool sign = text[0] == '-' && !isUnsigned;
    if (!real && !sign && !std::isdigit(static_cast<unsigned char>(text[0]))) return std::nullopt;
    char* end = nullptr;
    errno = 0;
    uint64_t out = 0;
    if (real) {
      const double d = std::strtod(text.c_str(), &end);
      const float f = static_cast<float>(d);
      std::memcpy(&out, type == "SA_FLOAT_T" ? static_cast<const void*>(&f) : &d, type == "SA_FLOAT_T" ? 4 : 8);
    } else {
      out = isUnsigned ? std::strtoull(text.c_str(), &end, 10)
                       : static_cast<uint64_t>(std::strtoll(text.c_str(), &end, 10));
    }
    if (*end != '\0' || (!real && errno != 0)) return std::nullopt;
    return out;
  };
  const std::optional<uint64_t> x = bits(a);
  return x && x == bits(b);
}

std::string attrName(const std::string& type, size_t index) {
  std::string name = type.substr(3, type.size() - 5);  // SA_INT32_T: INT32
  for (char& c : name) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return name + "_" + std::to_string(index);
}

// The oracle: objects by dn, with their class and typed values.
struct Attr {
  std::string type;
  Values values;
};
struct Object {
  std::string className, parent, rdnValue;
  std::map<std::string, Attr> attrs;  // present attributes, with or without values; not the naming attribute
  std::string dn() const {
    return ImmClass{className, {}}.rdnName() + "=" + escapedRdnValue(rdnValue) + (parent.empty() ? "" : "," + parent);
  }
};
struct ClassInfo {
  std::string parent;                   // class of the parents; empty for the root class
  bool leaf = false;                    // never a parent
  std::map<std::string, ImmAttr> defs;  // every attribute the class has had
};
struct Model {
  std::map<std::string, ClassInfo> classes;  // the live classes
  std::map<std::string, Object> objects;     // by dn

  std::vector<Object*> of(const std::string& className) {
    std::vector<Object*> found;
    for (auto& entry : objects) {
      if (entry.second.className == className) found.push_back(&entry.second);
    }
    return found;
  }
  void add(const Object& object) { objects[object.dn()] = object; }
  std::vector<std::string> classNames(bool leavesOnly, bool withInstances) {
    std::vector<std::string> names;
    for (const auto& [name, cls] : classes) {
      if ((!leavesOnly || cls.leaf) && (!withInstances || !of(name).empty())) names.push_back(name);
    }
    return names;
  }
};

std::vector<ImmClass> immClasses(const Model& model) {
  std::vector<ImmClass> classes;
  for (const auto& [name, cls] : model.classes) {
    classes.push_back({name, {}});
    for (const auto& entry : cls.defs) classes.back().attrs.push_back(entry.second);
  }
  return classes;
}

std::vector<ImmObject> immObjects(const Model& model) {
  std::vector<ImmObject> objects;
  for (const auto& [dn, o] : model.objects) {
    ImmObject& imm = objects.emplace_back(ImmObject{o.className, dn, {}});
    for (const auto& [name, attr] : o.attrs) {
      if (!attr.values.empty()) imm.attrs.emplace_back(name, attr.values);
    }
  }
  return objects;
}

// Draws the old model and the chain of actions, applying each action's
// effect to the model as it goes.
class Generator {
 public:
  explicit Generator(unsigned seed) : rng_(seed) {}

  // Plain arithmetic on the engine's output, which is the same everywhere (the distributions are not).
  size_t below(size_t n) { return rng_() % n; }
  bool chance(double p) { return rng_() < p * 4294967296.0; }
  template <typename T>
  const T& pick(const std::vector<T>& from) {
    return from[below(from.size())];
  }
  std::string anyType(bool withBytes) {
    return std::next(samples().begin(), withBytes ? below(samples().size()) : 1 + below(samples().size() - 1))->first;
  }

  // Root, Mid below it, Leaf below Mid, Side below Root: one attribute of
  // each type and two more per class, one or two objects below each parent.
  Model oldModel() {
    Model model;
    const char* const tree[][2] = {{"Root", ""}, {"Mid", "Root"}, {"Leaf", "Mid"}, {"Side", "Root"}};
    for (const auto& [name, parent] : tree) {
      ClassInfo& cls = model.classes[name];
      cls.parent = parent;
      cls.leaf = std::string(name) == "Leaf" || std::string(name) == "Side";
      std::vector<std::string> types;
      for (const auto& entry : samples()) types.push_back(entry.first);
      types.push_back(anyType(true));
      types.push_back(anyType(true));
      for (size_t i = 0; i < types.size(); ++i) {
        const std::string attr = attrName(types[i], i);
        cls.defs[attr] = ImmAttr{attr, types[i], chance(0.35)};
      }
      std::vector<std::string> parents;
      for (Object* p : model.of(parent)) parents.push_back(p->dn());
      if (*parent == '\0') parents.push_back("");
      for (const std::string& parentDn : parents) {
        for (size_t n = 1 + below(2); n > 0; --n) model.add(object(name, parentDn, cls));
      }
    }
    return model;
  }

  // The Mo elements of one file.
  std::string file(Model& model, bool withMistake) {
    std::string mos;
    const size_t count = 2 + below(3);
    const size_t mistakeAt = withMistake ? below(count) : count;
    for (size_t i = 0; i < count; ++i) {
      if (i == mistakeAt) {
        mos += mistake(model);
        continue;
      }
      const std::string className = pick(model.classNames(false, true));
      std::string actions;
      for (size_t n = 1 + below(3); n > 0 && model.classes.count(className) != 0; --n) {
        actions += action(model, className);
      }
      mos += mo(className, actions);
    }
    return mos;
  }

  bool mustFail = false;

 private:
  Object object(const std::string& className, const std::string& parentDn, const ClassInfo& cls) {
    Object o{className, parentDn, chance(0.4) ? pick(kRdnValues) : std::to_string(++counter_), {}};
    while (dns_.count(o.dn()) != 0) o.rdnValue = std::to_string(++counter_) + o.rdnValue;
    dns_.insert(o.dn());
    for (const auto& [name, def] : cls.defs) {
      if (chance(0.15)) continue;
      Attr& attr = o.attrs[name];
      attr.type = def.type;
      for (size_t n = def.multiValue ? 1 + below(4) : 1; n > 0; --n)
        attr.values.push_back(pick(samples().at(def.type)));
    }
    return o;
  }

  // Attributes of the class that some instance (`all`: every instance) has with at least `minValues` values.
  std::vector<std::string> attrsWith(Model& model, const std::string& className, size_t minValues, bool all) {
    std::vector<std::string> found;
    for (const auto& [name, def] : model.classes[className].defs) {
      size_t having = 0, instances = 0;
      for (Object* o : model.of(className)) {
        ++instances;
        having += o->attrs.count(name) != 0 && o->attrs[name].values.size() >= minValues;
      }
      if (all ? having == instances : having > 0) found.push_back(name);
    }
    return found;
  }

  std::vector<std::string> childClasses(Model& model, const std::string& className, bool leavesWithInstances) {
    std::vector<std::string> found;
    for (const auto& [name, cls] : model.classes) {
      if (cls.parent == className && (!leavesWithInstances || (cls.leaf && !model.of(name).empty()))) {
        found.push_back(name);
      }
    }
    return found;
  }

  // Now and then a parentRdnValue argument: the RDN value of one instance (of any with that value); its value,
  // or empty.
  std::string parentFilter(Model& model, const std::string& className, ArgList& args) {
    if (!chance(0.4)) return "";
    args.emplace_back("parentRdnValue", pick(model.of(className))->rdnValue);
    return args.back().second;
  }

  std::string action(Model& model, const std::string& c) {
    ClassInfo& cls = model.classes[c];
    const std::vector<Object*> instances = model.of(c);
    switch (below(10)) {
      case 0: {  // a new attribute with default values
        const std::string type = anyType(false), name = "added" + std::to_string(++counter_);
        std::string text;
        Values pieces;
        for (size_t n = below(4); n > 0; --n) {
          const std::string piece = pick(samples().at(type));
          text += (pieces.empty() ? "" : "|") + piece;
          pieces.push_back(piece);
        }
        cls.defs[name] = ImmAttr{name, type, pieces.size() > 1};
        for (Object* o : instances) {
          o->attrs[name].type = type;
          for (const std::string& piece : pieces) {
            if (!piece.empty() || type == "SA_STRING_T") o->attrs[name].values.push_back(piece);
          }
        }
        return moAction("AddAttributeAction", ArgList{{"name", name}, {"type", type}, {"defaultValue", text}});
      }
      case 1: {  // an attribute removed from every instance, or from those of one RDN value, or from one name
        const std::string name = std::next(cls.defs.begin(), below(cls.defs.size()))->first;
        const Object* one = pick(instances);
        const size_t filter = below(3);
        ArgList args = {{"name", name}};
        if (filter > 0)
          args.emplace_back(filter == 1 ? "rdnValue" : "ldnValue", filter == 1 ? one->rdnValue : one->dn());
        for (Object* o : instances) {
          if (filter == 0 || (o->rdnValue == one->rdnValue && (filter == 1 || o == one))) o->attrs.erase(name);
        }
        return moAction("RemoveAttributeAction", args);
      }
      case 2: {  // an attribute every instance has, renamed
        const std::vector<std::string> names = attrsWith(model, c, 0, true);
        if (names.empty()) return "";
        const std::string name = pick(names), newName = "renamed" + std::to_string(++counter_);
        cls.defs[newName] = ImmAttr{newName, cls.defs[name].type, cls.defs[name].multiValue};
        for (Object* o : instances) {
          o->attrs[newName] = o->attrs[name];
          o->attrs.erase(name);
        }
        return moAction("RenameAttributeAction", ArgList{{"name", name}, {"newName", newName}});
      }
      case 3: {  // all values of an attribute every instance has copied into another one of its type
        const std::vector<std::string> sources = attrsWith(model, c, 1, true);
        if (sources.empty()) return "";
        const std::string source = pick(sources);
        std::vector<std::string> targets = {"copied" + std::to_string(++counter_)};
        for (const auto& [name, def] : cls.defs) {
          if (def.type == cls.defs[source].type && name != source) targets.push_back(name);
        }
        const std::string target = pick(targets);
        cls.defs[target] = ImmAttr{target, cls.defs[source].type, true};
        for (Object* o : instances) o->attrs[target] = o->attrs[source];
        return moAction("SetAttributeValueAction", ArgList{{"name", target}},
                        "operator=\"=\" valueFromAttr=\"" + source + "\"");
      }
      case 4: {  // the value at one position removed (the last one where there are fewer)
        const std::vector<std::string> names = attrsWith(model, c, 1, false);
        if (names.empty()) return "";
        const std::string name = pick(names);
        size_t most = 0;
        for (Object* o : instances) most = std::max(most, o->attrs.count(name) ? o->attrs[name].values.size() : 0);
        const size_t index = below(most);
        for (Object* o : instances) {
          if (o->attrs.count(name) == 0 || o->attrs[name].values.empty()) continue;
          Values& values = o->attrs[name].values;
          values.erase(values.begin() + std::min(index, values.size() - 1));
        }
        return moAction("RemoveArrayElementAction", ArgList{{"name", name}, {"index", std::to_string(index)}});
      }
      case 5: {  // a child below every instance, or below one
        const std::vector<std::string> kinds = childClasses(model, c, false);
        if (kinds.empty()) return "";
        const std::string kind = pick(kinds), value = std::to_string(++counter_) + pick(kRdnValues);
        ArgList args = {{"childType", kind}, {"childRdnValue", value}};
        const std::string only = parentFilter(model, c, args);
        for (Object* p : instances) {
          if (only.empty() || p->rdnValue == only) model.add(Object{kind, p->dn(), value, {}});
        }
        return moAction("CreateChildInstanceAction", args);
      }
      case 6: {  // the children of a leaf class below every instance or one, all or the one of a value
        const std::vector<std::string> kinds = childClasses(model, c, true);
        if (kinds.empty()) return "";
        const std::string kind = pick(kinds), value = chance(0.6) ? pick(model.of(kind))->rdnValue : "";
        ArgList args = {{"childType", kind}};
        if (!value.empty()) args.emplace_back("childRdnValue", value);
        const std::string only = parentFilter(model, c, args);
        for (Object* child : model.of(kind)) {
          const Object& p = model.objects.at(child->parent);
          if ((only.empty() || p.rdnValue == only) && p.className == c && (value.empty() || child->rdnValue == value)) {
            model.objects.erase(child->dn());
          }
        }
        return moAction("RemoveChildInstanceAction", args);
      }
      case 7:  // a class that exists created again: its instances stay
        return moAction("CreateMoTypeAction", ArgList{{"moTypeName", pick(model.classNames(false, false))}});
      default:  // a leaf class renamed or deleted, the last action of its Mo
        return cls.leaf ? retype(model, c) : "";
    }
  }

  // Renames or deletes leaf class `c`; the class has no group afterwards.
  std::string retype(Model& model, const std::string& c) {
    std::vector<Object> moved;
    for (Object* o : model.of(c)) {
      moved.push_back(*o);
      model.objects.erase(o->dn());
    }
    if (chance(0.4)) {
      model.classes.erase(c);
      return moAction("DeleteMoTypeAction", "");
    }
    const std::string newName = "Re" + c;
    model.classes[newName] = model.classes[c];
    model.classes.erase(c);
    for (Object& o : moved) {
      o.className = newName;
      model.add(o);
    }
    return moAction("RenameMoTypeAction", ArgList{{"name", c}, {"newName", newName}});
  }

  // One Mo holding a mistake the run must fail on.
  std::string mistake(Model& model) {
    mustFail = true;
    const std::vector<std::string> leaves = model.classNames(true, true);
    const std::string c = pick(model.classNames(false, true));
    std::vector<std::string> integers;
    for (const std::string& name : attrsWith(model, c, 1, false)) {
      const std::string& type = model.classes[c].defs[name].type;
      if (type.find("INT") != std::string::npos || type == "SA_TIME_T") integers.push_back(name);
    }
    switch (below(4)) {
      case 0:  // an action after the class lost its group in the same Mo
        if (!leaves.empty()) {
          const std::string leaf = pick(leaves);
          const std::string name = model.classes[leaf].defs.begin()->first;
          return mo(leaf, retype(model, leaf) + moAction("RemoveAttributeAction", ArgList{{"name", name}}));
        }
        [[fallthrough]];
      case 1:  // a malformed number as the default of an integer attribute
        return mo(c, moAction("AddAttributeAction",
                              ArgList{{"name", "broken"}, {"type", "SA_INT32_T"}, {"defaultValue", "12x"}}));
      case 2:  // an index beyond every int, on an attribute holding values
        if (!integers.empty()) {
          return mo(c,
                    moAction("RemoveArrayElementAction", ArgList{{"name", pick(integers)}, {"index", "4294967296"}}));
        }
        [[fallthrough]];
      default:  // a filter value that is no number, for an integer attribute holding values
        if (integers.empty())
          return mo(c, moAction("AddAttributeAction",
                                ArgList{{"name", "broken"}, {"type", "SA_UINT64_T"}, {"defaultValue", "-"}}));
        return mo(c, moAction("RemoveAttributeAction", ArgList{{"name", pick(integers)}, {"oldAttributeValue", "1x"}}));
    }
  }

  std::mt19937 rng_;
  unsigned counter_ = 0;
  std::set<std::string> dns_;
};

std::string shown(const std::string& type, const Values& values) {
  std::string text = type + " [";
  for (const std::string& value : values) {
    text += (text.back() == '[' ? "\"" : ", \"") + (value.size() > 40 ? value.substr(0, 40) + "..." : value) + "\"";
  }
  return text + "]";
}

// What is wrong with the run's outcome and new model; empty when nothing is.
std::vector<std::string> problems(const RunResult& run, const Model& expected, bool mustFail) {
  std::vector<std::string> found, values;  // values: reported after the objects
  const auto check = [&](bool wrong, const std::string& what) {
    if (wrong) found.push_back(what);
  };
  check(run.exitStatus != 0 && run.exitStatus != 1,
        "neither success nor a rollback: " + run.report.substr(0, run.report.find('\n')));
  check(run.exitStatus == 0 && !run.rollback.empty(), "success signalled after a rollback request");
  check(run.exitStatus == 1 && run.rollback.empty(), "failed without a rollback reason");
  check(run.exitStatus == 1 && !run.modelFiles().empty(), "a rolled-back run left a model in model/");
  check(mustFail && run.exitStatus == 0, "the chain holds a mistake, but the run succeeded");
  check(!mustFail && run.exitStatus != 0, "a valid chain did not succeed:\n" + run.rollbackText());
  if (mustFail || run.exitStatus != 0) return found;

  // The parent of an expected object is expected: an object written without its parent shows as one missing.
  std::set<std::string> written;
  for (const ModelObject& o : run.objectList("Prop")) {
    check(!written.insert(o.dn).second, "written twice: " + o.dn);
    const auto wanted = expected.objects.find(o.dn);
    if (wanted == expected.objects.end()) {
      found.push_back("not expected: " + o.className + " " + o.dn);
      continue;
    }
    const Object& want = wanted->second;
    check(o.className != want.className, o.dn + ": class " + o.className + ", expected " + want.className);
    std::set<std::string> names;
    for (const auto& entry : o.attrs) names.insert(entry.first);
    for (const auto& entry : want.attrs) names.insert(entry.first);
    for (const std::string& name : names) {
      const Attr attr = want.attrs.count(name) ? want.attrs.at(name) : Attr{"(absent)", {}};
      const Values got = o.attrs.count(name) ? o.attrs.at(name) : Values{};
      bool same = attr.values.size() == got.size();
      for (size_t i = 0; same && i < got.size(); ++i) same = sameValue(attr.type, attr.values[i], got[i]);
      if (!same)
        values.push_back(o.dn + " " + name + ": " + shown("", got) + ", expected " + shown(attr.type, attr.values));
    }
  }
  for (const auto& [dn, o] : expected.objects) check(written.count(dn) == 0, "missing: " + o.className + " " + dn);
  found.insert(found.end(), values.begin(), values.end());
  return found;
}

class NothingLostPropertyTest : public testing::TestWithParam<unsigned> {};

TEST_P(NothingLostPropertyTest, NewModelHoldsWhatTheActionsLeave) {
  Generator generate(GetParam());
  Model model = generate.oldModel();
  SchemaSetup schema{"Prop", "1_0_0", "2_0_0", immClasses(model), immObjects(model)};
  const bool twoFiles = generate.chance(0.5);
  const int mistakeIn = generate.chance(0.3) ? static_cast<int>(generate.below(twoFiles ? 2 : 1)) : -1;
  std::vector<std::string> files;
  for (int i = 0; i < (twoFiles ? 2 : 1); ++i) files.push_back(modifications(generate.file(model, i == mistakeIn)));
  schema.newClasses = immClasses(model);
  schema.newClassesOnNode = generate.chance(0.5);

  TempDir dir;
  NodeBuilder node(dir.path());
  node.add(schema);
  const Values names = twoFiles ? Values{"modification_1_0_0_to_1_1_0.xml", "modification_1_1_0_to_2_0_0.xml"}
                                : Values{"modification_1_0_0_to_2_0_0.xml"};
  for (size_t i = 0; i < files.size(); ++i)
    node.modificationFile("Prop", "CXC1_R" + std::to_string(i + 1) + "A", names[i], files[i]);
  const RunResult run = WholeRun(node).run();

  const std::vector<std::string> found = problems(run, model, generate.mustFail);
  if (found.empty()) return;
  std::string text;
  for (size_t i = 0; i < found.size() && i < 25; ++i) text += "  " + found[i] + "\n";
  if (found.size() > 25) text += "  ... " + std::to_string(found.size() - 25) + " more\n";
  for (size_t i = 0; i < files.size(); ++i) text += names[i] + ":\n" + files[i];
  ADD_FAILURE() << "seed " << GetParam() << (schema.newClassesOnNode ? "" : ", node without imm/new")
                << (generate.mustFail ? ", chain with a mistake" : "") << "\n"
                << run.report.substr(0, run.report.find('\n')) << "\n"
                << text;
}

INSTANTIATE_TEST_SUITE_P(Seeds, NothingLostPropertyTest, testing::Range(1u, 51u));

}  // namespace
}  // namespace e2e
