#include "support/foreign_value.h"
#include "support/models.h"
#include "unit/metadata/attribute_contents.h"

#include <keld-common/text_tree.h>
#include <keld-transl/metadata/product_attributes.h>
#include <keld-transl/product/assembly.h>
#include <keld-transl/product/instance.h>
#include <keld-transl/product/part.h>
#include <keld-transl/topology/face.h>

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace transl_tk {
namespace {

using Texts = std::vector<std::pair<std::string, std::string>>;

class ProductAttributesTest : public testing::Test
{
protected:
    /// Makes an attribute on `entity` and files it.
    Attribute * file(Base * entity, char const * name, tests::Contents const & contents,
                     int type = 2)
    {
        Attribute * const attribute = tests::anAttribute(name, type, contents);
        attribute->addEntity(entity);
        ProductAttributes::createHierarchyAtrrsMap(attribute, &m_Attributes);
        return attribute;
    }

    static Texts textsOf(ProductAttributes & attributes, Hierarchy * hierarchy)
    {
        std::unique_ptr<TreeS_P, decltype(&FreeTreeS_P)> const tree(
            attributes.calcHierarchyAttributes(hierarchy), FreeTreeS_P);
        if (tree == nullptr)
            return {{"no", "tree"}};
        Texts texts;
        auto const note = [](char const * key, char const * text, void * user) {
            static_cast<Texts *>(user)->emplace_back(key, text);
            return 1;
        };
        EXPECT_EQ(WalkTreeS_P(tree.get(), note, &texts), 1);
        return texts;
    }

    Texts texts(Hierarchy * hierarchy) { return textsOf(m_Attributes, hierarchy); }

    HierarchyInfo gather(Hierarchy * hierarchy)
    {
        HierarchyInfo info;
        m_Attributes.gatherVPMData(hierarchy, info);
        return info;
    }

    inline static Texts const NoTree = {{"no", "tree"}};

    tests::ScopedPool m_Pool;
    ProductAttributes m_Attributes;
    Part * m_Part = Part::create(41, "part");
};

TEST_F(ProductAttributesTest, StandUnderTheirNames)
{
    file(m_Part, "Mass", {1.5});
    EXPECT_EQ(texts(m_Part), (Texts{{"CAD/Mass", "1.5"}}));
}

TEST_F(ProductAttributesTest, AreTextForEveryTypeOfValue)
{
    file(m_Part, "1", {"a b"});
    file(m_Part, "2", {-7});
    file(m_Part, "3", {true});
    file(m_Part, "4", {0.1F});
    file(m_Part, "5", {1234567.0});
    file(m_Part, "6", {static_cast<unsigned char>(65)});
    file(m_Part, "7", {std::monostate()});
    tests::anAttribute("", 0, {});
    file(m_Part, "8", {})->addValue(new tests::ForeignValue(9));
    EXPECT_EQ(texts(m_Part), (Texts{{"CAD/1", "a b"},
                                    {"CAD/2", "-7"},
                                    {"CAD/3", "1"},
                                    {"CAD/4", "0.1"},
                                    {"CAD/5", "1.23457e+06"},
                                    {"CAD/6", "65"},
                                    {"CAD/7", ""},
                                    {"CAD/8", ""}}));
}

TEST_F(ProductAttributesTest, TheLastValueStaysUnderANameInEitherCase)
{
    file(m_Part, "Mass", {"first", "second"});
    EXPECT_EQ(texts(m_Part), (Texts{{"CAD/Mass", "second"}}));
    file(m_Part, "MASS", {"third"});
    EXPECT_EQ(texts(m_Part), (Texts{{"CAD/Mass", "third"}}));
}

TEST_F(ProductAttributesTest, OfAnItemWithCommentsAloneAreNull)
{
    file(m_Part, "Note", {"a"}, 7);
    EXPECT_EQ(m_Attributes.calcHierarchyAttributes(m_Part), nullptr);
    EXPECT_EQ(m_Attributes.calcHierarchyAttributes(nullptr), nullptr);
}

TEST_F(ProductAttributesTest, HoldTheCommentOfAnItemThatHasAttributes)
{
    file(m_Part, "Note", {"a"}, 7);
    file(m_Part, "Mass", {1.5});
    EXPECT_EQ(texts(m_Part), (Texts{{"CAD/Comment", "Note a\n"}, {"CAD/Mass", "1.5"}}));
    file(m_Part, "comment", {"replaced"});
    EXPECT_EQ(texts(m_Part), (Texts{{"CAD/comment", "Note a\n"}, {"CAD/Mass", "1.5"}}));
}

TEST_F(ProductAttributesTest, WithoutValuesMakeATreeWithoutTexts)
{
    file(m_Part, "Mass", {});
    EXPECT_EQ(texts(m_Part), Texts());
}

TEST_F(ProductAttributesTest, AreFiledForAssembliesPartsAndInstances)
{
    Assembly * const assembly = Assembly::create(0, "assembly");
    Instance * const instance = Instance::create(0, m_Part);
    Attribute * const attribute = tests::anAttribute("Mass", 2, {1.5});
    for (Base * const entity : std::initializer_list<Base *>{assembly, m_Part, instance})
        attribute->addEntity(entity);
    ProductAttributes::createHierarchyAtrrsMap(attribute, &m_Attributes);
    for (Hierarchy * const item : std::initializer_list<Hierarchy *>{assembly, m_Part, instance})
        EXPECT_EQ(texts(item), (Texts{{"CAD/Mass", "1.5"}}));
}

TEST_F(ProductAttributesTest, OfAFaceAreNotFiled)
{
    Face * const face = Face::create(0, nullptr);
    std::pair<ProductAttributes *, Attribute *> pair(&m_Attributes,
                                                     tests::anAttribute("Mass", 2, {1.5}));
    EXPECT_TRUE(ProductAttributes::insertHierarchyAttribute(face, &pair));
    // The face's address alone is looked for.
    auto * const asItem = reinterpret_cast<Hierarchy *>(static_cast<Base *>(face));
    EXPECT_EQ(m_Attributes.calcHierarchyAttributes(asItem), nullptr);
    EXPECT_TRUE(ProductAttributes::insertHierarchyAttribute(m_Part, &pair));
    EXPECT_EQ(texts(m_Part), (Texts{{"CAD/Mass", "1.5"}}));
    file(face, "Weight", {2})->addEntity(m_Part);
    EXPECT_EQ(texts(m_Part), (Texts{{"CAD/Mass", "1.5"}}));
}

TEST_F(ProductAttributesTest, OfOtherTypesAreNotFiled)
{
    for (int type : {-1, 0, 1, 3, 5, 14})
        file(m_Part, "Mass", {1.5}, type);
    EXPECT_EQ(texts(m_Part), NoTree);
    file(m_Part, "Weight", {2});
    EXPECT_EQ(texts(m_Part), (Texts{{"CAD/Weight", "2"}})) << "nor did they become comments";
}

TEST_F(ProductAttributesTest, OfNullAreNotFiled)
{
    ProductAttributes::createHierarchyAtrrsMap(nullptr, &m_Attributes);
    ProductAttributes::createHierarchyAtrrsMap(tests::anAttribute("Mass", 2, {1}), nullptr);
    EXPECT_EQ(texts(m_Part), NoTree);
}

TEST_F(ProductAttributesTest, ACopySharesTheListsAndOutlivesItsOriginal)
{
    auto original = std::make_unique<ProductAttributes>();
    Attribute * const mass = tests::anAttribute("Mass", 2, {1.5});
    Attribute * const note = tests::anAttribute("Note", 7, {"a"});
    Attribute * const late = tests::anAttribute("Late", 2, {1});
    for (Attribute * const attribute : {mass, note, late})
        attribute->addEntity(m_Part);
    ProductAttributes::createHierarchyAtrrsMap(mass, original.get());
    ProductAttributes::createHierarchyAtrrsMap(note, original.get());
    HierarchyInfo info;
    original->gatherVPMData(Assembly::create(0, "first"), info);
    ProductAttributes copy = *original;
    m_Attributes = copy;
    ProductAttributes::createHierarchyAtrrsMap(late, original.get());
    original.reset();
    for (ProductAttributes * const each : {&copy, &m_Attributes}) {
        EXPECT_EQ(textsOf(*each, m_Part),
                  (Texts{{"CAD/Comment", "Note a\n"}, {"CAD/Late", "1"}, {"CAD/Mass", "1.5"}}));
        each->gatherVPMData(m_Part, info);
        EXPECT_EQ(info.key, "2") << "the running numbers go on";
    }
}

TEST_F(ProductAttributesTest, HaveNoVirtualOperations)
{
    EXPECT_FALSE(std::is_polymorphic_v<ProductAttributes>);
}

TEST_F(ProductAttributesTest, ItemsAreNumberedAsTheyAreVisited)
{
    Assembly * const assembly = Assembly::create(7, "assembly");
    EXPECT_EQ(gather(m_Part).key, "1");
    EXPECT_EQ(gather(assembly).key, "2");
    EXPECT_EQ(gather(m_Part).key, "1");
    EXPECT_EQ(gather(Part::create(0, "last")).key, "3");
}

TEST_F(ProductAttributesTest, APartIsDescribed)
{
    m_Part->setPartLabel("label");
    m_Part->setFirstLabel("first");
    m_Part->setSecondLabel("second");
    std::array<double, 16> transform{};
    for (std::size_t i = 0; i < 16; ++i)
        transform[i] = static_cast<double>(i) + 0.5;
    m_Part->setTransform(transform.data());
    HierarchyInfo info;
    EXPECT_EQ(m_Attributes.gatherVPMData(m_Part, info), Hierarchy::Part);
    EXPECT_EQ(info.id, "41");
    EXPECT_EQ(info.key, "1");
    EXPECT_EQ(info.firstLabel, "first");
    EXPECT_EQ(info.secondLabel, "second");
    EXPECT_EQ(info.name, "part");
    EXPECT_EQ(info.parentKey, "");
    EXPECT_EQ(info.partLabel, "label");
    EXPECT_TRUE(std::equal(transform.begin(), transform.end(), info.transform));
}

TEST_F(ProductAttributesTest, AnAssemblyIsDescribedWithoutAPartLabel)
{
    Assembly * const assembly = Assembly::create(-7, "assembly");
    assembly->setFirstLabel("first");
    assembly->setSecondLabel("second");
    HierarchyInfo info;
    info.partLabel = "untouched";
    EXPECT_EQ(m_Attributes.gatherVPMData(assembly, info), Hierarchy::Assembly);
    EXPECT_EQ(info.id, "-7");
    EXPECT_EQ(info.key, "1");
    EXPECT_EQ(info.firstLabel, "first");
    EXPECT_EQ(info.secondLabel, "second");
    EXPECT_EQ(info.name, "assembly");
    EXPECT_EQ(info.partLabel, "untouched");
}

TEST_F(ProductAttributesTest, AnInstanceNamesTheIdOfItsComponentAndNothingOfIt)
{
    m_Part->setFirstLabel("first");
    Instance * const instance = Instance::create(99, m_Part);
    gather(m_Part);
    HierarchyInfo info;
    info.firstLabel = info.secondLabel = info.name = info.partLabel = "untouched";
    EXPECT_EQ(m_Attributes.gatherVPMData(instance, info), Hierarchy::Instance);
    EXPECT_EQ(info.id, "99");
    EXPECT_EQ(info.key, "41");
    for (std::string const & text : {info.firstLabel, info.secondLabel, info.name, info.partLabel})
        EXPECT_EQ(text, "untouched");
}

TEST_F(ProductAttributesTest, TheParentIsNamedWhenItWasVisitedBefore)
{
    Assembly * const assembly = Assembly::create(0, "assembly");
    Instance * const instance = Instance::create(0, m_Part);
    Part * const child = Part::create(0, "child");
    assembly->addChild(instance);
    assembly->addChild(child);
    EXPECT_EQ(gather(child).parentKey, "");
    gather(m_Part);
    EXPECT_EQ(gather(instance).parentKey, "1") << "of an instance, also when it was not";
    EXPECT_EQ(gather(assembly).key, "4");
    EXPECT_EQ(gather(instance).parentKey, "4");
    EXPECT_EQ(gather(child).parentKey, "4");
}

TEST_F(ProductAttributesTest, AnInstanceKeepsAParentKeyThatIsThere)
{
    HierarchyInfo info;
    info.parentKey = "given";
    m_Attributes.gatherVPMData(Instance::create(0, m_Part), info);
    EXPECT_EQ(info.parentKey, "given");
}

} // namespace
} // namespace transl_tk
