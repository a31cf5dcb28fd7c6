// Tests of the hash maps: exact, case-sensitive keys, operator[] inserting
// defaults, walks that give every pair once (also while removing the pair
// just given), and maps as values.
#include "platform/Maps.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>

namespace {

std::u16string S(const CString& s) { return std::u16string(s.View()); }

// Distinct keys, some short and some long enough for the heap.
CString Text(int i) {
  CString s;
  s.Format(u"key%d", i);
  if (i % 3 == 0) s += CString(u'-', 80);
  return s;
}

// Walks the map and counts how often each key was given.
template <class Map, class Value>
std::map<std::u16string, int> Walk(const Map& map, std::map<std::u16string, Value>* values = nullptr) {
  std::map<std::u16string, int> seen;
  POSITION pos = map.GetStartPosition();
  CString key;
  Value value{};
  while (pos != nullptr) {
    map.GetNextAssoc(pos, key, value);
    ++seen[S(key)];
    if (values) (*values)[S(key)] = value;
  }
  return seen;
}

TEST(MapLookup, KeysCompareExactlyWithCase) {
  CMapStringToString map;
  const char16_t nulInside[] = {u'a', 0, u'b'};
  struct Row {
    CString key;
    const char16_t* value;
  } rows[] = {
      {u"Abc", u"1"}, {u"abc", u"2"}, {u"ABC", u"3"}, {u"abc ", u"4"},
      {CString(nulInside, 3), u"5"}, {u"a", u"6"}, {u"", u"7"},
      {CString(u'x', 100), u"8"},  // a long key, on the heap
  };
  for (const Row& r : rows) map[r.key] = r.value;
  ASSERT_EQ(map.GetCount(), 8);
  for (const Row& r : rows) {
    CString value;
    EXPECT_TRUE(map.Lookup(r.key, value)) << testing::PrintToString(S(r.key));
    EXPECT_EQ(S(value), r.value) << testing::PrintToString(S(r.key));
  }
  for (const char16_t* missing : {u"aBc", u"abC", u" abc", u"ab"}) {
    CString value(u"untouched");
    EXPECT_FALSE(map.Lookup(missing, value)) << testing::PrintToString(std::u16string(missing));
    EXPECT_EQ(S(value), u"untouched");
  }
  CString value;
  EXPECT_FALSE(map.Lookup(CString(u'x', 99), value));  // one unit shorter
}

TEST(MapEdit, OperatorBracketsInsertsDefaultsAndSetAtOverwrites) {
  CMapStringToOb objects;
  EXPECT_EQ(objects[u"k"], nullptr);
  EXPECT_EQ(objects.GetCount(), 1);

  CMapStringToString texts;
  EXPECT_TRUE(texts[u"k"].IsEmpty());
  texts.SetAt(u"k", u"one");
  texts.SetAt(u"k", u"two");
  EXPECT_EQ(texts.GetCount(), 1);
  EXPECT_EQ(S(texts[u"k"]), u"two");

  CString& stored = texts[u"k"];
  for (int i = 0; i < 500; ++i) texts[Text(i)] = u"v";  // the table grows
  EXPECT_EQ(&stored, &texts[u"k"]);                      // values stay in place

  EXPECT_TRUE(texts.RemoveKey(u"k"));
  EXPECT_FALSE(texts.RemoveKey(u"k"));
  EXPECT_FALSE(texts.RemoveKey(u"K"));
  EXPECT_EQ(texts.GetCount(), 500);
  texts.RemoveAll();
  EXPECT_TRUE(texts.IsEmpty());
  EXPECT_EQ(texts.GetStartPosition(), nullptr);
}

TEST(MapWalk, EveryPairOnceInAStableOrder) {
  CMapStringToPtr map;
  map.InitHashTable(17);
  EXPECT_GE(map.GetHashTableSize(), 17u);
  int slots[300];
  for (int i = 0; i < 300; ++i) map[Text(i)] = &slots[i];

  std::map<std::u16string, void*> values;
  std::map<std::u16string, int> seen = Walk(map, &values);
  ASSERT_EQ(seen.size(), 300u);
  for (int i = 0; i < 300; ++i) {
    EXPECT_EQ(seen[S(Text(i))], 1) << i;
    EXPECT_EQ(values[S(Text(i))], &slots[i]) << i;
  }

  std::vector<std::u16string> first, second;
  CString key;
  void* value = nullptr;
  for (POSITION pos = map.GetStartPosition(); pos != nullptr;) {
    map.GetNextAssoc(pos, key, value);
    first.push_back(S(key));
  }
  map[CString(first[0])] = nullptr;  // changing a value is not a change of the map
  for (POSITION pos = map.GetStartPosition(); pos != nullptr;) {
    map.GetNextAssoc(pos, key, value);
    second.push_back(S(key));
  }
  EXPECT_EQ(first, second);

  POSITION none = nullptr;
  key = u"kept";
  map.GetNextAssoc(none, key, value);  // a null position is ignored
  EXPECT_EQ(S(key), u"kept");
}

TEST(MapWalk, RemovingThePairJustGiven) {
  CMapStringToString map;
  for (int i = 0; i < 200; ++i) map[Text(i)] = Text(i + 1000);
  int walked = 0;
  POSITION pos = map.GetStartPosition();
  CString key, value;
  while (pos != nullptr) {
    map.GetNextAssoc(pos, key, value);
    ++walked;
    EXPECT_TRUE(map.RemoveKey(key)) << key.ToUtf8();
  }
  EXPECT_EQ(walked, 200);
  EXPECT_TRUE(map.IsEmpty());
}

TEST(MapTemplate, NumberKeysAndPointerArguments) {
  CMap<DWORD, DWORD, DWORD, DWORD> numbers;
  for (DWORD k = 0; k < 64; ++k) numbers[k << 4] = k + 1;  // keys that differ in high bits only
  DWORD value = 99;
  EXPECT_FALSE(numbers.Lookup(1, value));
  EXPECT_EQ(value, 99u);
  EXPECT_TRUE(numbers.Lookup(63u << 4, value));
  EXPECT_EQ(value, 64u);
  EXPECT_EQ(numbers[7], 0u);  // inserted as zero
  EXPECT_EQ(numbers.GetCount(), 65);

  CMap<CString, const char16_t*, int, int> byText;  // keys passed as plain text
  byText.SetAt(u"one", 1);
  int n = 0;
  EXPECT_TRUE(byText.Lookup(u"one", n));
  EXPECT_EQ(n, 1);
  EXPECT_FALSE(byText.Lookup(u"One", n));
}

TEST(MapValue, CopyAndMove) {
  CMapStringToString a;
  a[u"k"] = u"v";
  CMapStringToString copy(a);
  copy[u"k"] = u"changed";
  EXPECT_EQ(S(a[u"k"]), u"v");

  CMapStringToString moved(std::move(a));
  EXPECT_EQ(moved.GetCount(), 1);
  EXPECT_TRUE(a.IsEmpty());  // the moved-from map is empty and usable
  copy = std::move(moved);
  EXPECT_EQ(S(copy[u"k"]), u"v");
  EXPECT_TRUE(moved.IsEmpty());
}

// Objects kept in an object map are the owner's to delete, through CObject.
TEST(MapObjects, OwnerDeletesThroughTheBase) {
  struct Counted : CObject {
    int* live;
    explicit Counted(int* counter) : live(counter) { ++*live; }
    ~Counted() override { --*live; }
  };
  int live = 0;
  CMapStringToOb map;
  for (int i = 0; i < 5; ++i) map[Text(i)] = new Counted(&live);
  EXPECT_EQ(live, 5);
  POSITION pos = map.GetStartPosition();
  CString key;
  CObject* object = nullptr;
  while (pos != nullptr) {
    map.GetNextAssoc(pos, key, object);
    delete object;
  }
  map.RemoveAll();
  EXPECT_EQ(live, 0);
}

}  // namespace
