#include "import/pmi_words.h"

#include <algorithm>
#include <cctype>
#include <cstddef>

namespace step {

namespace {

constexpr char const * DimensionWords[] = {
    "location",
    "curved distance",
    "linear distance",
    "linear distance from centre to outer",
    "linear distance from centre to inner",
    "linear distance from outer to centre",
    "linear distance from outer to outer",
    "linear distance from outer to inner",
    "linear distance from inner to centre",
    "linear distance from inner to outer",
    "linear distance from inner to inner",
    "angle between",
    "oriented location",
    "location with path",
    "curve length",
    "diameter",
    "spherical diameter",
    "radius",
    "spherical radius",
    "toroidal minor diameter",
    "toroidal major diameter",
    "toroidal minor radius",
    "toroidal major radius",
    "toroidal high major diameter",
    "toroidal low major diameter",
    "toroidal high major radius",
    "toroidal low major radius",
    "thickness",
    "angle",
    "size with path",
    "common label",
    "presentation",
};

constexpr char const * ToleranceWords[] = {
    "tolerance",          "angularity",       "circular runout", "circularity",
    "coaxiality",         "concentricity",    "cylindricity",    "flatness",
    "parallelism",        "perpendicularity", "position",        "profile of line",
    "profile of surface", "straightness",     "symmetry",        "total runout",
};

constexpr char const * QualifierWords[] = {
    "none",
    "minimum",
    "maximum",
    "average",
};

constexpr char const * DimensionModifierWords[] = {
    "controlled radius",
    "square",
    "statistical tolerance",
    "continuous feature",
    "two point size",
    "local size defined by sphere",
    "least squares association criterion",
    "maximum inscribed association",
    "minimum circumscribed association",
    "circumference diameter",
    "area diameter",
    "volume diameter",
    "maximum size",
    "minimum size",
    "average size",
    "median size",
    "mid range size",
    "range of sizes",
    "any restricted portion of feature",
    "any cross section",
    "specific fixed cross section",
    "common tolerance",
    "free state condition",
    "between",
};

constexpr char const * ToleranceModifierWords[] = {
    "any cross section",
    "common zone",
    "each radial element",
    "free state",
    "least material requirement",
    "line element",
    "major diameter",
    "maximum material requirement",
    "minor diameter",
    "not convex",
    "pitch diameter",
    "reciprocity requirement",
    "separate requirement",
    "statistical tolerance",
    "tangent plane",
    "all around",
    "all over",
};

constexpr char const * DatumModifierWords[] = {
    "any cross section",
    "any longitudinal section",
    "basic",
    "contacting feature",
    "degree of freedom constraint U",
    "degree of freedom constraint V",
    "degree of freedom constraint W",
    "degree of freedom constraint X",
    "degree of freedom constraint Y",
    "degree of freedom constraint Z",
    "distance variable",
    "free state",
    "least material requirement",
    "line",
    "major diameter",
    "maximum material requirement",
    "minor diameter",
    "orientation",
    "pitch diameter",
    "plane",
    "point",
    "translation",
};

constexpr char const * ValueTypeWords[] = {
    "none",
    "diameter",
    "spherical diameter",
};

constexpr char const * MaterialWords[] = {
    "none",
    "maximum material requirement",
    "least material requirement",
};

constexpr char const * ZoneWords[] = {
    "none",
    "projected",
    "runout",
    "non-uniform",
};

constexpr char const * DatumValueWords[] = {
    "none", "circular or cylindrical", "distance", "projected", "spherical",
};

constexpr char const * TargetWords[] = {
    "point", "line", "rectangle", "circle", "area",
};

constexpr char const * VarianceWords[] = {
    "",  "A", "B", "C", "CD", "D", "E", "EF", "F", "FG", "G", "H",  "JS", "J",  "K",
    "M", "N", "P", "R", "S",  "T", "U", "V",  "X", "Y",  "Z", "ZA", "ZB", "ZC",
};

constexpr char const * GradeWords[] = {
    "01", "0",  "1",  "2",  "3",  "4",  "5",  "6",  "7",  "8",
    "9",  "10", "11", "12", "13", "14", "15", "16", "17", "18",
};

template <std::size_t Count> char const * wordAt(char const * const (&words)[Count], int number)
{
    return number >= 0 && static_cast<std::size_t>(number) < Count ? words[number] : "unknown";
}

} // namespace

char const * wordOf(XCAFDimTolObjects_DimensionType number)
{
    return wordAt(DimensionWords, number);
}

char const * wordOf(XCAFDimTolObjects_DimensionQualifier number)
{
    return wordAt(QualifierWords, number);
}

char const * wordOf(XCAFDimTolObjects_DimensionModif number)
{
    return wordAt(DimensionModifierWords, number);
}

char const * wordOf(XCAFDimTolObjects_GeomToleranceType number)
{
    return wordAt(ToleranceWords, number);
}

char const * wordOf(XCAFDimTolObjects_GeomToleranceTypeValue number)
{
    return wordAt(ValueTypeWords, number);
}

char const * wordOf(XCAFDimTolObjects_GeomToleranceMatReqModif number)
{
    return wordAt(MaterialWords, number);
}

char const * wordOf(XCAFDimTolObjects_GeomToleranceZoneModif number)
{
    return wordAt(ZoneWords, number);
}

char const * wordOf(XCAFDimTolObjects_GeomToleranceModif number)
{
    return wordAt(ToleranceModifierWords, number);
}

char const * wordOf(XCAFDimTolObjects_DatumSingleModif number)
{
    return wordAt(DatumModifierWords, number);
}

char const * wordOf(XCAFDimTolObjects_DatumModifWithValue number)
{
    return wordAt(DatumValueWords, number);
}

char const * wordOf(XCAFDimTolObjects_DatumTargetType number)
{
    return wordAt(TargetWords, number);
}

std::string toleranceClass(bool isHole, XCAFDimTolObjects_DimensionFormVariance variance,
                           XCAFDimTolObjects_DimensionGrade grade)
{
    std::string letters = wordAt(VarianceWords, variance);
    if (!isHole)
        std::transform(letters.begin(), letters.end(), letters.begin(), [](unsigned char letter) {
            return static_cast<char>(std::tolower(letter));
        });
    return letters + wordAt(GradeWords, grade);
}

} // namespace step
