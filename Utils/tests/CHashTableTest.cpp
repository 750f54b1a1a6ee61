// The string map: values, keys that are prefixes of others, removal and the walk in order of setting.
#include "Utils/CHashTable.h"

#include <cppunit/extensions/HelperMacros.h>
#include <string>
#include <vector>

using CKeys = std::vector<std::string>;

class CHashTableTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CHashTableTest);
    CPPUNIT_TEST(CreateDelete);
    CPPUNIT_TEST(SetGetValue);
    CPPUNIT_TEST(ContainsKey);
    CPPUNIT_TEST(Remove);
    CPPUNIT_TEST(Move);
    CPPUNIT_TEST_SUITE_END();

    // The keys of a walk from the start, as UTF-8.
    static CKeys WalkKeys(CHashTable& table)
    {
        CKeys aKeys;
        CEnumerator* pEnumerator = table.GetEnumerator();
        while (aKeys.size() < 1000 && pEnumerator->MoveNext())
            aKeys.push_back(pEnumerator->GetKey().ToUtf8());
        return aKeys;
    }

public:
    void CreateDelete()
    {
        CHashTable table;
        CEnumerator* pEnumerator = table.GetEnumerator();
        CPPUNIT_ASSERT_EQUAL(0, pEnumerator->GetCount());
        CPPUNIT_ASSERT(!pEnumerator->MoveNext());
        CPPUNIT_ASSERT(pEnumerator->GetKey().IsEmpty());
        for (const char16_t* szKey : {u"a", u"ab", u"b"})
            table.SetValue(szKey, u"1");
        table.RemoveAll();
        CPPUNIT_ASSERT(!table.ContainsKey(u"a"));
        CPPUNIT_ASSERT_EQUAL(0, table.GetEnumerator()->GetCount());
        table.SetValue(u"a", u"4");
        CPPUNIT_ASSERT(table.GetValue(u"a") == u"4");

        // Very long keys and very many siblings are freed without deep recursion.
        const std::u16string strLong(1000000, u'k');
        table.SetValue(strLong.c_str(), u"long");
        for (char16_t ch = 1; ch < 0xFFFF; ch += 7)
            table.SetValue(std::u16string(1, ch).c_str(), u"");
        CPPUNIT_ASSERT(table.GetValue(strLong.c_str()) == u"long");
    }

    void SetGetValue()
    {
        CHashTable table;
        table.SetValue(u"1", u"val0");
        table.SetValue(u"2", u"two");
        table.SetValue(u"1", u"val1");
        CPPUNIT_ASSERT(table.GetValue(u"1") == u"val1");
        CPPUNIT_ASSERT(table[u"2"] == u"two");
        CPPUNIT_ASSERT(CKeys({"1", "2"}) == WalkKeys(table));
        CPPUNIT_ASSERT(table.GetValue(u"3").IsEmpty());
        CPPUNIT_ASSERT(table.GetValue(nullptr).IsEmpty());
        table.SetValue(u"", u"x");
        table.SetValue(nullptr, u"x");
        CPPUNIT_ASSERT_EQUAL(2, table.GetEnumerator()->GetCount());

        // An empty value is a value; siblings compare as unsigned numbers.
        table.SetValue(u"e", nullptr);
        CPPUNIT_ASSERT(table.ContainsKey(u"e"));
        for (const char16_t* szKey : {u"\xFFFF", u"\x0001", u"\x8000"})
            table.SetValue(szKey, szKey);
        for (const char16_t* szKey : {u"\xFFFF", u"\x0001", u"\x8000"})
            CPPUNIT_ASSERT(table.GetValue(szKey) == szKey);
    }

    void ContainsKey()
    {
        CHashTable table, tableLonger;
        for (const char16_t* szKey : {u"2", u"folder", u"a|tag|tags", u"Case"})
            table.SetValue(szKey, u"");
        CPPUNIT_ASSERT(table.ContainsKey(u"2"));
        CPPUNIT_ASSERT(table.ContainsKey(u"folder"));
        for (const char16_t* szKey : {u"n2", u"folder1", u"fold", u"acronym|tag|tags", u"case", u""})
            CPPUNIT_ASSERT(!table.ContainsKey(szKey));
        tableLonger.SetValue(u"folder1", u"");
        CPPUNIT_ASSERT(!tableLonger.ContainsKey(u"folder"));
    }

    void Remove()
    {
        CHashTable table;
        for (const char16_t* szKey : {u"4", u"2", u"3", u"1"})
            table.SetValue(szKey, szKey);
        table.Remove(u"2");
        CPPUNIT_ASSERT(!table.ContainsKey(u"2"));
        CPPUNIT_ASSERT(table.GetValue(u"2").IsEmpty());
        CPPUNIT_ASSERT(CKeys({"4", "3", "1"}) == WalkKeys(table));
        table.Remove(u"2");
        table.Remove(u"missing");
        CPPUNIT_ASSERT_EQUAL(3, table.GetEnumerator()->GetCount());

        // Set again it goes to the end; head and tail can go too.
        table.SetValue(u"2", u"again");
        CPPUNIT_ASSERT(CKeys({"4", "3", "1", "2"}) == WalkKeys(table));
        table.Remove(u"4");
        table.Remove(u"2");
        table.SetValue(u"5", u"");
        CPPUNIT_ASSERT(CKeys({"3", "1", "5"}) == WalkKeys(table));
        table.Remove(u"5");

        // Removing during a walk starts the walk again.
        CEnumerator* pEnumerator = table.GetEnumerator();
        CPPUNIT_ASSERT(pEnumerator->MoveNext());
        table.Remove(u"3");
        CPPUNIT_ASSERT(pEnumerator->GetKey().IsEmpty());
        CPPUNIT_ASSERT(pEnumerator->MoveNext());
        CPPUNIT_ASSERT(pEnumerator->GetKey() == u"1");
    }

    void Move()
    {
        CHashTable table;
        const char16_t* aKeys[] = {u"zeta", u"alpha", u"mu", u"alphabet"};
        const char16_t* aValues[] = {u"1", u"2", u"3", u"4"};
        for (int i = 0; i < 4; ++i)
            table.SetValue(aKeys[i], aValues[i]);
        CEnumerator* pEnumerator = table.GetEnumerator();
        for (int i = 0; i < 4; ++i)
        {
            CPPUNIT_ASSERT(pEnumerator->MoveNext());
            CPPUNIT_ASSERT(pEnumerator->GetKey() == aKeys[i]);
            CPPUNIT_ASSERT(pEnumerator->GetValue() == aValues[i]);
        }
        CPPUNIT_ASSERT(!pEnumerator->MoveNext());
        CPPUNIT_ASSERT(pEnumerator->GetValue().IsEmpty());
        // Behind the end the next step begins again; GetEnumerator resets the shared walk.
        CPPUNIT_ASSERT(pEnumerator->MoveNext());
        CPPUNIT_ASSERT(pEnumerator->GetKey() == u"zeta");
        CPPUNIT_ASSERT(pEnumerator->MoveNext());
        CPPUNIT_ASSERT(table.GetEnumerator() == pEnumerator);
        CPPUNIT_ASSERT(pEnumerator->MoveNext());
        CPPUNIT_ASSERT(pEnumerator->GetKey() == u"zeta");
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CHashTableTest, "All Tests");
