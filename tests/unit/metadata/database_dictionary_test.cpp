#include "support/foreign_value.h"
#include "support/models.h"
#include "unit/metadata/attribute_contents.h"

#include <keld-transl/metadata/database_dictionary.h>

#include <climits>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <type_traits>
#include <vector>

using tests::Content;
using tests::Contents;

namespace transl_tk {
namespace {

using testing::AnyOf;

class DataBaseDictionaryTest : public testing::Test
{
protected:
    int number(int type) { return numberIn(m_Dictionary, type); }
    std::string text(int type) { return textIn(m_Dictionary, type); }

    static int numberIn(DataBaseDictionary & dictionary, int type)
    {
        int value = -1;
        dictionary.getData(DataBaseType(type), value);
        return value;
    }

    static std::string textIn(DataBaseDictionary & dictionary, int type)
    {
        std::string value = "untouched";
        dictionary.getData(DataBaseType(type), value);
        return value;
    }

    /// What `serialize` writes.
    static Contents written(DataBaseDictionary & dictionary)
    {
        dictionary.serialize();
        return tests::contentsOf(*attributes().back());
    }

    static std::vector<Attribute *> & attributes() { return tests::currentSubPool().m_Attributes; }

    void expectRefused(Contents const & contents)
    {
        Attribute * const attribute = tests::anAttribute("", 14, contents);
        EXPECT_FALSE(DataBaseDictionary::isDictionary(attribute));
        DataBaseDictionary filled;
        filled.addData(DataBaseType(5), 9);
        filled.addData(FeatureCounts, "rib");
        filled.addData(TextList, "kept");
        filled.deserialize(attribute);
        EXPECT_EQ(written(filled), (Contents{2, 5, 9, 2, "rib", 1, "kept,"}));
    }

    tests::ScopedPool m_Pool;
    DataBaseDictionary m_Dictionary;
};

/// Two numbers, two counters and a text.
Contents const Sound = {4, 70, 12, 5, -3, 4, "rib", 2, "slot", 1, "a,b,"};

TEST_F(DataBaseDictionaryTest, CountsFromZero)
{
    m_Dictionary.addData(DataBaseType(5));
    EXPECT_EQ(number(5), 1);
    m_Dictionary.addData(DataBaseType(5));
    EXPECT_EQ(number(5), 2);
    EXPECT_EQ(number(6), 0);
}

TEST_F(DataBaseDictionaryTest, SetsANumberWhateverItWas)
{
    m_Dictionary.addData(DataBaseType(5), 9);
    m_Dictionary.addData(DataBaseType(5));
    EXPECT_EQ(number(5), 10);
    m_Dictionary.addData(DataBaseType(5), -4);
    EXPECT_EQ(number(5), -4);
}

TEST_F(DataBaseDictionaryTest, TakesAnyNumberAsKey)
{
    m_Dictionary.addData(DataBaseType(INT_MIN), 1);
    m_Dictionary.addData(DataBaseType(INT_MAX), 2);
    EXPECT_EQ(number(INT_MIN), 1);
    EXPECT_EQ(number(INT_MAX), 2);
}

TEST_F(DataBaseDictionaryTest, TheLargestNumberIsNotCountedBeyond)
{
    m_Dictionary.addData(Faces, INT_MAX);
    m_Dictionary.addData(Faces);
    EXPECT_EQ(number(Faces), INT_MAX);
}

TEST_F(DataBaseDictionaryTest, CollectsTextWithACommaBehindEach)
{
    EXPECT_EQ(text(19), "");
    m_Dictionary.addData(DataBaseType(19), "a");
    m_Dictionary.addData(DataBaseType(19), "b");
    EXPECT_EQ(text(19), "a,b,");
    m_Dictionary.addData(DataBaseType(19), "");
    EXPECT_EQ(text(19), "a,b,");
}

TEST_F(DataBaseDictionaryTest, CountsByName)
{
    EXPECT_EQ(text(83), "");
    m_Dictionary.addData(DataBaseType(83), "x");
    m_Dictionary.addData(DataBaseType(83), "x");
    m_Dictionary.addData(DataBaseType(83), "");
    EXPECT_EQ(text(83), "Metadata: x | 2<br>");
    m_Dictionary.addData(DataBaseType(83), "y");
    EXPECT_THAT(text(83), AnyOf("Metadata: x | 2<br>Metadata: y | 1<br>",
                                "Metadata: y | 1<br>Metadata: x | 2<br>"));
}

TEST_F(DataBaseDictionaryTest, TextOfAnyOtherTypeIsIgnored)
{
    m_Dictionary.addData(DataBaseType(7), "a");
    EXPECT_EQ(text(7), "untouched");
    EXPECT_EQ(written(m_Dictionary), (Contents{0, 0, ""}));
}

TEST_F(DataBaseDictionaryTest, CountsFeaturesByTheFirstWordInTheirNames)
{
    struct Row
    {
        char const * name;
        int holes;
        int blends;
    };
    for (Row const row :
         {Row{"xHOLEy", 1, 0}, Row{"xCHAMFERy", 0, 1}, Row{"xFILLETy", 0, 1},
          Row{"HOLE FILLET", 0, 1}, Row{"HOLE CHAMFER", 0, 1}, Row{"CHAMFER FILLET HOLE", 0, 1},
          Row{"fillet", 0, 0}, Row{"hole", 0, 0}, Row{"Chamfer", 0, 0}, Row{"", 0, 0}}) {
        m_Dictionary.resetData();
        m_Dictionary.addFeatureType(row.name);
        EXPECT_EQ(number(21), row.holes) << row.name;
        EXPECT_EQ(number(22), row.blends) << row.name;
    }
}

TEST_F(DataBaseDictionaryTest, ResettingEmptiesIt)
{
    m_Dictionary.addData(Faces, 3);
    m_Dictionary.addData(FeatureCounts, "x");
    m_Dictionary.addData(TextList, "a");
    m_Dictionary.resetData();
    EXPECT_EQ(written(m_Dictionary), (Contents{0, 0, ""}));
}

TEST_F(DataBaseDictionaryTest, ACopyHasTheSameContentAndGoesItsOwnWay)
{
    m_Dictionary.addData(Faces, 3);
    m_Dictionary.addData(FeatureCounts, "x");
    m_Dictionary.addData(TextList, "a");
    DataBaseDictionary copy = m_Dictionary;
    DataBaseDictionary assigned;
    assigned = m_Dictionary;
    m_Dictionary.resetData();
    EXPECT_EQ(written(copy), (Contents{2, 70, 3, 2, "x", 1, "a,"}));
    EXPECT_EQ(written(assigned), (Contents{2, 70, 3, 2, "x", 1, "a,"}));
}

TEST_F(DataBaseDictionaryTest, HasNoVirtualOperations)
{
    EXPECT_FALSE(std::is_polymorphic_v<DataBaseDictionary>);
}

TEST_F(DataBaseDictionaryTest, AnEmptyOneIsWrittenAsTwoZeroesAndAnEmptyText)
{
    m_Dictionary.serialize();
    ASSERT_EQ(attributes().size(), 1U);
    EXPECT_EQ(attributes()[0]->getType(), 14);
    EXPECT_STREQ(attributes()[0]->getName(), "");
    EXPECT_EQ(tests::contentsOf(*attributes()[0]), (Contents{0, 0, ""}));
}

TEST_F(DataBaseDictionaryTest, IsWrittenAsNumbersThenCountersThenText)
{
    m_Dictionary.addData(DataBaseType(5), 7);
    m_Dictionary.addData(FeatureCounts, "x");
    m_Dictionary.addData(FeatureCounts, "x");
    m_Dictionary.addData(TextList, "a");
    EXPECT_EQ(written(m_Dictionary), (Contents{2, 5, 7, 2, "x", 2, "a,"}));
}

TEST_F(DataBaseDictionaryTest, TheCountsAreThoseOfValuesAndNotOfEntries)
{
    for (int type : {1, 2, 3})
        m_Dictionary.addData(DataBaseType(type), 10 * type);
    Contents const contents = written(m_Dictionary);
    ASSERT_EQ(contents.size(), 9U);
    EXPECT_EQ(contents[0], Content(6));
    EXPECT_EQ(contents[7], Content(0));
}

TEST_F(DataBaseDictionaryTest, IsNotWrittenWithoutAModel)
{
    Pool::destruct();
    m_Dictionary.addData(Faces, 1);
    m_Dictionary.serialize();
    EXPECT_FALSE(Pool::hasInstance());
}

TEST_F(DataBaseDictionaryTest, WhatIsWrittenIsReadBack)
{
    m_Dictionary.addData(Faces, 12);
    m_Dictionary.addData(DataBaseType(-5), -3);
    m_Dictionary.addData(FeatureCounts, "rib");
    m_Dictionary.addData(FeatureCounts, "slot");
    m_Dictionary.addData(FeatureCounts, "slot");
    m_Dictionary.addData(TextList, "\xC3\xA4 b");
    m_Dictionary.serialize();
    EXPECT_TRUE(DataBaseDictionary::isDictionary(attributes()[0]));
    DataBaseDictionary read;
    read.deserialize(attributes()[0]);
    EXPECT_EQ(numberIn(read, Faces), 12);
    EXPECT_EQ(numberIn(read, -5), -3);
    EXPECT_THAT(textIn(read, 83), AnyOf("Metadata: rib | 1<br>Metadata: slot | 2<br>",
                                        "Metadata: slot | 2<br>Metadata: rib | 1<br>"));
    EXPECT_EQ(textIn(read, 19), "\xC3\xA4 b,");
}

TEST_F(DataBaseDictionaryTest, ReadingKeepsWhatIsThereAndReplacesTheText)
{
    m_Dictionary.addData(Faces, 1);
    m_Dictionary.addData(FeatureCounts, "rib");
    m_Dictionary.addData(TextList, "old");
    m_Dictionary.deserialize(tests::anAttribute("any", 3, Sound));
    EXPECT_EQ(number(Faces), 1);
    EXPECT_EQ(number(5), -3);
    EXPECT_THAT(text(83), AnyOf("Metadata: rib | 1<br>Metadata: slot | 1<br>",
                                "Metadata: slot | 1<br>Metadata: rib | 1<br>"));
    EXPECT_EQ(text(19), "a,b,");
}

TEST_F(DataBaseDictionaryTest, OfAKeyThatStandsTwiceTheFirstCounts)
{
    m_Dictionary.deserialize(tests::anAttribute("", 14, {4, 5, 1, 5, 2, 4, "x", 1, "x", 2, ""}));
    EXPECT_EQ(written(m_Dictionary), (Contents{2, 5, 1, 2, "x", 1, ""}));
}

TEST_F(DataBaseDictionaryTest, ReadingTakesNullForNoDictionary)
{
    EXPECT_FALSE(DataBaseDictionary::isDictionary(nullptr));
    m_Dictionary.addData(Faces, 1);
    m_Dictionary.deserialize(nullptr);
    EXPECT_EQ(number(Faces), 1);
}

TEST_F(DataBaseDictionaryTest, EveryTruncationIsRefused)
{
    ASSERT_TRUE(DataBaseDictionary::isDictionary(tests::anAttribute("", 14, Sound)));
    for (std::size_t size = 0; size < Sound.size(); ++size) {
        SCOPED_TRACE(size);
        expectRefused(Contents(Sound.begin(), Sound.begin() + static_cast<long>(size)));
    }
}

TEST_F(DataBaseDictionaryTest, EveryValueOfAnotherTypeIsRefused)
{
    Contents const kinds = {
        std::monostate(), "text", 7, true, 1.5F, 2.5, static_cast<unsigned char>(8)};
    for (std::size_t i = 0; i < Sound.size(); ++i)
        for (Content const & kind : kinds) {
            if (kind.index() == Sound[i].index())
                continue;
            SCOPED_TRACE(testing::Message() << "value " << i << ", kind " << kind.index());
            Contents unsound = Sound;
            unsound[i] = kind;
            expectRefused(unsound);
        }
}

TEST_F(DataBaseDictionaryTest, ValuesOfTypesThatDoNotExistAreRefused)
{
    for (int type : {-1, 0, 7}) {
        Attribute * const attribute = tests::anAttribute("", 14, {0, 0});
        attribute->addValue(new tests::ForeignValue(type));
        EXPECT_FALSE(DataBaseDictionary::isDictionary(attribute));
    }
}

TEST_F(DataBaseDictionaryTest, CountsThatDoNotFitAreRefused)
{
    for (std::size_t const place : {std::size_t{0}, std::size_t{5}})
        for (int const count :
             {INT_MIN, -4, -2, -1, 0, 1, 2, 3, 5, 6, 8, 10, 12, INT_MAX - 1, INT_MAX}) {
            SCOPED_TRACE(testing::Message() << "count " << count << " at " << place);
            Contents unsound = Sound;
            unsound[place] = count;
            expectRefused(unsound);
        }
}

TEST_F(DataBaseDictionaryTest, WhatFollowsTheTextIsRefused)
{
    for (Content const & more : Contents{"", 0, std::monostate()}) {
        Contents unsound = Sound;
        unsound.push_back(more);
        expectRefused(unsound);
    }
}

TEST(DataBaseTypes, HaveTheirNumbers)
{
    std::vector<std::pair<DataBaseType, int>> const numbers = {
        {AttributesType12, 0},
        {AttributesGeneral, 2},
        {Annotations, 3},
        {AttributesType11, 4},
        {AttributesType5, 8},
        {AttributesType7, 9},
        {TextList, 19},
        {HoleFeatures, 21},
        {BlendFeatures, 22},
        {Faces, 70},
        {Triangles, 71},
        {Assemblies, 72},
        {Parts, 73},
        {Instances, 74},
        {AssemblyInstances, 75},
        {PartInstances, 76},
        {SpotWelds, 78},
        {AttributesType10, 79},
        {FeatureCounts, 83},
        {SurfaceBSpline, 84},
        {SurfaceType1, 85},
        {SurfaceCone, 86},
        {SurfaceCylinder, 87},
        {SurfaceOffset, 88},
        {SurfaceRevolution, 89},
        {SurfaceRuled, 90},
        {SurfaceExtrusion, 91},
        {SurfaceTorus, 92},
        {SurfaceSphere, 93},
        {SurfacePlane, 94},
        {SurfaceType6, 95},
        {CurveCircle, 98},
        {CurveLine, 99},
        {CurveLineStrip, 100},
        {CurveComposite, 102},
        {CurveBSpline, 103},
        {CurveType4, 104},
        {CurveEllipse, 105},
    };
    for (auto const & [type, number] : numbers)
        EXPECT_EQ(static_cast<int>(type), number);
    EXPECT_EQ(sizeof(DataBaseType), 4U);
}

} // namespace
} // namespace transl_tk
