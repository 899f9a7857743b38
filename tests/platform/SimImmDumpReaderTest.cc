#include "SimImmDumpReader.h"

#include <gtest/gtest.h>

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
