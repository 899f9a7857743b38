#include "SimImmDumpReader.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "SimImmOldModel.h"

#include "SimImmNodeTest.h"

namespace {

TEST(SimImmDumpReaderTest, ADefinitionsPassStopsAtTheFirstObject) {
  TempDir dir;
  // The object is followed by garbage that a full read refuses.
  std::string path = dir.write("model.xml", immXml(R"(<class name="A"><rdn><name>aId</name><type>SA_STRING_T</type>
      </rdn><attr><name>x</name><type>SA_ANY_T</type><flag>F1</flag><flag>F2</flag></attr></class>
      <object class="A"><dn>aId=1</dn></object>
      <object class="A"><dn>aId=2</dn><attr><value>1</value></attr></object>)"));
  std::vector<SimImmClass> classes;
  SimImmDumpReader::Handler handler;
  handler.onClass = [&](SimImmClass&& cls) {
    classes.push_back(std::move(cls));
    return true;
  };
  SimImmDumpReader reader;
  ASSERT_TRUE(reader.read(path, handler)) << reader.error();
  ASSERT_EQ(1u, classes.size());
  EXPECT_EQ("aId", classes[0].rdn.name);
  ASSERT_EQ(1u, classes[0].attrs.size());
  EXPECT_EQ(10, classes[0].attrs[0].type);
  EXPECT_EQ((std::vector<std::string>{"F1", "F2"}), classes[0].attrs[0].flags);

  handler.onObject = [](SimImmObject&&) { return true; };
  EXPECT_FALSE(reader.read(path, handler));
  EXPECT_NE(std::string::npos, reader.error().find("model.xml: line 6: object attribute without name"))
      << reader.error();
}

TEST(SimImmDumpReaderTest, TheShapeOfTheDocumentIsChecked) {
  struct Case {
    const char* body;
    const char* error;  // empty: accepted
  };
  const Case cases[] = {
      {"<class name=\"A\"><rdn><name>aId</name><type>SA_STRING_T</type></rdn></class><other><x/></other>"
       "<object class=\"A\"><dn>aId=1</dn><extra>skipped</extra><attr><name>n</name></attr></object>", ""},
      {"<object class=\"A\"><dn>aId=1</dn></object><class name=\"B\"/>", "class definition after objects"},
      {"<class name=\"A\"/>", "class A has no rdn"},
      {"<class><rdn><name>aId</name><type>SA_STRING_T</type></rdn></class>", "class without name attribute"},
      {"<class name=\"A\"><rdn><type>SA_STRING_T</type></rdn></class>", "attribute definition without name"},
      {"<object><dn>aId=1</dn></object>", "object without class attribute"},
      {"<object class=\"A\"></object>", "object of class A without dn"},
      {"<object class=\"A\"><dn>a<b/></dn></object>", "element inside <dn>"},
  };
  TempDir dir;
  for (const Case& c : cases) {
    std::string path = dir.write("model.xml", immXml(c.body));
    SimImmDumpReader::Handler handler;
    int objects = 0;
    handler.onObject = [&](SimImmObject&& object) {
      EXPECT_TRUE(object.attrs.empty()) << "an attribute without values is left out";
      ++objects;
      return true;
    };
    SimImmDumpReader reader;
    bool ok = reader.read(path, handler);
    if (c.error[0] == '\0') {
      EXPECT_TRUE(ok) << reader.error();
      EXPECT_EQ(1, objects);
    } else {
      EXPECT_FALSE(ok) << c.body;
      EXPECT_NE(std::string::npos, reader.error().find(c.error)) << reader.error();
    }
  }
}

}  // namespace

namespace {

// A copy after a read streams from the index (the files are gone by then),
// in file order across its classes and files.
TEST(SimImmOldModelTest, ACopyStreamsFromTheIndexInFileOrder) {
  TempDir dir;
  const std::string a = dir.write("a.xml", kOldDump);
  const std::string b = dir.write("b.xml", immXml("<object class=\"Top\"><dn>topId=2</dn></object>"));
  SimImmOldModel model({a, b});
  std::string why;
  ASSERT_TRUE(model.objectsOf("Top", [](const SimImmObject&, std::string*) { return true; }, &why)) << why;
  ASSERT_EQ(0, std::remove(a.c_str()) + std::remove(b.c_str()));
  std::vector<std::string> copied;
  EXPECT_TRUE(model.streamObjects(
      {"Child", "Top"}, [&](const SimImmObject& o, std::string*) { return copied.push_back(o.dn), true; }, &why))
      << why;
  EXPECT_EQ((std::vector<std::string>{"topId=1", "childId=a\\,b,topId=1", "childId=2,topId=1", "topId=2"}), copied);
}

// A text made of an entity would be lost if the reference were skipped, so
// the file is refused, whether the parser or the reader finds it.
TEST(SimImmDumpReaderTest, AnEntityReferenceFailsTheFile) {
  const char* const prologs[] = {"<!DOCTYPE imm:IMM-contents [<!ENTITY e \"aId=1\">]>",
                                 "<!DOCTYPE imm:IMM-contents SYSTEM \"absent.dtd\">"};
  TempDir dir;
  for (const char* prolog : prologs) {
    std::string xml = immXml("<object class=\"A\"><dn>aId=1&e;</dn></object>");
    std::string path = dir.write("model.xml", xml.insert(xml.find('\n') + 1, std::string(prolog) + "\n"));
    SimImmDumpReader::Handler handler;
    handler.onObject = [](SimImmObject&&) { return true; };
    SimImmDumpReader reader;
    EXPECT_FALSE(reader.read(path, handler)) << prolog;
    EXPECT_NE(std::string::npos, reader.error().find("model.xml: line 4:")) << reader.error();
  }
}

}  // namespace
