#include <keld-transl/process/export_options.h>

#include <algorithm>
#include <gtest/gtest.h>
#include <iterator>
#include <type_traits>

using namespace transl_tk;

namespace {

template <class Flags> Flags bits(unsigned int mask)
{
    return Flags(mask);
}

void expectTransform(ExportOptions const & options, double const (&expected)[4][4])
{
    double transform[4][4] = {};
    options.getTransform(transform);
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column)
            EXPECT_EQ(transform[row][column], expected[row][column]) << row << ',' << column;
    }
}

void expectUnits(ExportOptions const & options, bool enabled, int lengthUnit, double factor)
{
    bool gotEnabled = !enabled;
    int gotLengthUnit = lengthUnit + 1;
    double gotFactor = factor + 1;
    options.getUnits(gotEnabled, gotLengthUnit, gotFactor);
    EXPECT_EQ(gotEnabled, enabled);
    EXPECT_EQ(gotLengthUnit, lengthUnit);
    EXPECT_EQ(gotFactor, factor);
}

constexpr double identity[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
constexpr double counted[4][4] = {{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}, {13, 14, 15, 16}};

} // namespace

TEST(ExportOptions, DefaultsAreOnlyBitSixteenOfTheConversion)
{
    ExportOptions const options;
    for (unsigned int bit = 0; bit < 32; ++bit) {
        EXPECT_FALSE(options.isOn(bits<Export_FLAGS>(1U << bit))) << bit;
        EXPECT_EQ(options.isOn(bits<Convert_FLAGS>(1U << bit)), bit == 16) << bit;
    }
    EXPECT_TRUE(options.isOn(ConvertDefaultOn));
    EXPECT_FALSE(options.isOn(ConvertDefaultOff));
    EXPECT_EQ(options.getSpotweldDiameter(), 10.0);
    expectUnits(options, false, 0, 1.0);
    expectTransform(options, identity);
}

TEST(ExportOptions, TakeTheirFlagWordsAsGiven)
{
    ExportOptions const options(0x80000005, 0x20000);
    for (unsigned int bit = 0; bit < 32; ++bit) {
        EXPECT_EQ(options.isOn(bits<Export_FLAGS>(1U << bit)), bit == 0 || bit == 2 || bit == 31);
        EXPECT_EQ(options.isOn(bits<Convert_FLAGS>(1U << bit)), bit == 17);
    }
    EXPECT_EQ(options.getSpotweldDiameter(), 10.0);
    expectUnits(options, false, 0, 1.0);
    expectTransform(options, identity);
}

TEST(ExportOptions, OfZeroHaveBitSixteenOff)
{
    EXPECT_FALSE(ExportOptions(0, 0).isOn(bits<Convert_FLAGS>(0x10000)));
}

TEST(ExportOptions, AMaskIsOnWithAllOfItsBits)
{
    ExportOptions const options(0x1, 0x10000);
    EXPECT_FALSE(options.isOn(bits<Export_FLAGS>(0x3)));
    EXPECT_FALSE(options.isOn(bits<Convert_FLAGS>(0x30000)));
    EXPECT_TRUE(ExportOptions(0x7, 0).isOn(bits<Export_FLAGS>(0x3)));
    EXPECT_TRUE(ExportOptions(0, 0x70000).isOn(bits<Convert_FLAGS>(0x30000)));
    EXPECT_TRUE(options.isOn(bits<Export_FLAGS>(0)));
}

TEST(ExportOptions, SetChangesOnlyTheBitsOfItsFlag)
{
    ExportOptions options(0xF0, 0xF0);
    options.set(bits<Export_FLAGS>(0x0C), true);
    EXPECT_TRUE(options.isOn(bits<Export_FLAGS>(0xFC)));
    EXPECT_FALSE(options.isOn(bits<Export_FLAGS>(0x01)));
    options.set(bits<Export_FLAGS>(0x30), false);
    EXPECT_TRUE(options.isOn(bits<Export_FLAGS>(0xCC)));
    EXPECT_FALSE(options.isOn(bits<Export_FLAGS>(0x10)));
    EXPECT_FALSE(options.isOn(bits<Export_FLAGS>(0x20)));
    EXPECT_TRUE(options.isOn(bits<Convert_FLAGS>(0xF0)));

    options.set(bits<Convert_FLAGS>(0x30), false);
    options.set(bits<Convert_FLAGS>(0x03), true);
    EXPECT_TRUE(options.isOn(bits<Convert_FLAGS>(0xC3)));
    EXPECT_FALSE(options.isOn(bits<Convert_FLAGS>(0x10)));
    EXPECT_FALSE(options.isOn(bits<Convert_FLAGS>(0x20)));
    EXPECT_TRUE(options.isOn(bits<Export_FLAGS>(0xCC)));
}

TEST(ExportOptions, PartGeometryIsCalledForByAnyOfItsBits)
{
    for (unsigned int bit = 0; bit < 32; ++bit) {
        bool const calls = bit == 0 || bit == 1 || bit == 4 || bit == 5;
        EXPECT_EQ(ExportOptions(1U << bit, 0).exportPartGeometry(), calls) << bit;
        EXPECT_FALSE(ExportOptions(0, 1U << bit).exportPartGeometry()) << bit;
    }
    EXPECT_EQ(ExportPartGeometry, 0x33U);
}

TEST(ExportOptions, KeepTransformDiameterAndUnits)
{
    ExportOptions options;
    options.setTransform(counted);
    options.setSpotweldDiameter(2.5);
    options.setUnits(true, -3, 25.4);
    expectTransform(options, counted);
    EXPECT_EQ(options.getSpotweldDiameter(), 2.5);
    expectUnits(options, true, -3, 25.4);
}

TEST(ExportOptions, CopiesAndMovesTakeEverything)
{
    ExportOptions options(0x5, 0x6);
    options.setTransform(counted);
    options.setSpotweldDiameter(2.5);
    options.setUnits(true, -3, 25.4);

    ExportOptions assigned;
    assigned = options;
    for (ExportOptions const & copy :
         {ExportOptions(options), assigned, ExportOptions(ExportOptions(options))}) {
        EXPECT_TRUE(copy.isOn(bits<Export_FLAGS>(0x5)));
        EXPECT_TRUE(copy.isOn(bits<Convert_FLAGS>(0x6)));
        expectTransform(copy, counted);
        EXPECT_EQ(copy.getSpotweldDiameter(), 2.5);
        expectUnits(copy, true, -3, 25.4);
    }
}

TEST(ExportOptions, AreAPlainValue)
{
    static_assert(std::is_trivially_copyable_v<ExportOptions>);
    static_assert(std::is_standard_layout_v<ExportOptions>);
    static_assert(sizeof(Export_FLAGS) == 4 && sizeof(Convert_FLAGS) == 4);
    // Two words, sixteen doubles, a double, a bool, an int and a double.
    EXPECT_EQ(sizeof(ExportOptions), 160U);
}
