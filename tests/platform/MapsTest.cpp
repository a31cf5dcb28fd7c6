// Tests of the hash maps: exact keys, defaults from operator[], walks giving each pair once, values, owners.
#include "platform/Maps.h"
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include "tests/support/Text.h"
using namespace vkt::test;
CString Key(int i) { return CString(u'k', i % 3 ? 1 : 80) + std::to_string(i).c_str(); }  // some on the heap
TEST(CMap, KeysCompareExactlyAndBracketsInsertDefaults) {
  const char16_t nul[] = {u'a', 0, u'b'};
  const CString keys[] = {u"Abc", u"abc", u"ABC", u"abc ", CString(nul, 3), u"", CString(u'x', 100),
                          u"aBc", u"ab", CString(u'x', 99)};  // the last three are missing
  CMapStringToString map;
  for (int i = 0; i < 7; ++i) map[keys[i]] = keys[i] + u"!";
  for (int i = 0; i < 10; ++i) {
    CString value(u"untouched");  // when the key is missing
    EXPECT_EQ(map.Lookup(keys[i], value), i < 7) << Row(keys[i]);
    EXPECT_EQ(U(value), i < 7 ? U(keys[i] + u"!") : u"untouched") << Row(keys[i]);
  }
  EXPECT_EQ(CMapStringToOb()[u"k"], nullptr);
  EXPECT_TRUE(map[u"x"].IsEmpty() && map.GetCount() == 8);
  map.SetAt(u"x", u"two");
  CString& stored = map[u"x"];
  for (int i = 0; i < 500; ++i) map[Key(i)] = u"v";  // the table grows; values stay in place
  EXPECT_TRUE(&stored == &map[u"x"] && stored == u"two" && map.RemoveKey(u"") && !map.RemoveKey(u""));
  CMapStringToString copy(map);
  copy[u"x"] = u"changed";
  CMapStringToString moved(std::move(map));
  EXPECT_TRUE(map.IsEmpty() && moved[u"x"] == u"two");  // copies are apart; the source of a move is empty
  copy = std::move(moved);
  EXPECT_TRUE(copy.GetCount() == 507 && moved.IsEmpty() && moved.GetStartPosition() == nullptr);
  copy.RemoveAll();
  EXPECT_TRUE(copy.IsEmpty() && copy.GetStartPosition() == nullptr);
}
// The owner deletes the objects through CObject: a pair given twice is deleted twice, one missed stays alive.
TEST(CMap, WalksGiveEveryPairOnce) {
  struct Counted : CObject {
    Counted(int* counter, const CString& name) : live(counter), key(name) { ++*live; }
    ~Counted() override { --*live; }
    int* live;
    CString key;
  };
  int live = 0;
  CMapStringToOb map;
  map.InitHashTable(17);
  EXPECT_GE(map.GetHashTableSize(), 17u);
  for (int i = 0; i < 300; ++i) map[Key(i)] = new Counted(&live, Key(i));
  CString key(u"kept");
  CObject* object = nullptr;
  POSITION none = nullptr;
  map.GetNextAssoc(none, key, object);  // a null position is ignored
  EXPECT_TRUE(key == u"kept" && object == nullptr);
  for (POSITION pos = map.GetStartPosition(); pos != nullptr;) {
    map.GetNextAssoc(pos, key, object);
    EXPECT_EQ(U(static_cast<Counted*>(object)->key), U(key));
    delete object;
    EXPECT_TRUE(map.RemoveKey(key)) << Row(key);  // removing the pair just given is allowed
  }
  EXPECT_TRUE(live == 0 && map.IsEmpty());
}
