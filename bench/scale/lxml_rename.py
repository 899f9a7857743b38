# The yardstick of the scale benchmark: the same rename as the benchmark's
# modification file, done on a whole dump with lxml.
# usage: python3 lxml_rename.py <old dump> <new dump>
import sys
from lxml import etree

tree = etree.parse(sys.argv[1])
for name in tree.iterfind("object[@class='EUtranCellRelation']/attr/name"):
    if name.text == "lastModification":
        name.text = "lastModificationCause"
for name in tree.iterfind("class[@name='EUtranCellRelation']/attr/name"):
    if name.text == "lastModification":
        name.text = "lastModificationCause"
tree.write(sys.argv[2], xml_declaration=True, encoding="UTF-8")
