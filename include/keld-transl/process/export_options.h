#ifndef KELD_TRANSL_PROCESS_EXPORT_OPTIONS_H
#define KELD_TRANSL_PROCESS_EXPORT_OPTIONS_H

#include <keld-transl/export.h>

namespace transl_tk {

/// What to export. Each enumerator is a mask of bits; further bits are the host's to name.
enum Export_FLAGS : unsigned int {
    ExportPartGeometry = 0x33 ///< the bits of which any one calls for the geometry of parts
};

/// How to convert. Each enumerator is a mask of bits; further bits are the host's to name.
enum Convert_FLAGS : unsigned int {
    ConvertDefaultOn = 0x10000, ///< bit 16, on by default
    ConvertDefaultOff = 0x20000 ///< bit 17, off by default
};

/// Settings of an export: flags, a transform, units and the diameter of spot welds. The library
/// keeps them for the host and gives them no meaning.
class KELD_TRANSL_EXPORT ExportOptions
{
public:
    ExportOptions();
    ExportOptions(unsigned int exportFlags, unsigned int convertFlags);

    /// Whether all bits of `flag` are set.
    bool isOn(Export_FLAGS flag) const;
    bool isOn(Convert_FLAGS flag) const;

    /// Sets or clears the bits of `flag`.
    void set(Export_FLAGS flag, bool const & on);
    void set(Convert_FLAGS flag, bool const & on);

    /// Whether any bit that calls for the geometry of parts is set.
    bool exportPartGeometry() const;

    /// 4 by 4 matrix, row by row; the identity at first.
    void getTransform(double (&transform)[4][4]) const;
    void setTransform(double const (&transform)[4][4]);

    /// 10.0 at first, in the model's length unit.
    double getSpotweldDiameter() const;
    void setSpotweldDiameter(double const & diameter);

    /// Whether units are to be converted, the length unit's number and its factor; at first false,
    /// 0 and 1.0.
    void getUnits(bool & enabled, int & lengthUnit, double & factor) const;
    void setUnits(bool const & enabled, int const & lengthUnit, double const & factor);

private:
    static void set(unsigned int & word, unsigned int flag, bool const & on);

    unsigned int m_ExportFlags;
    unsigned int m_ConvertFlags;
    double m_Transform[4][4];
    double m_SpotweldDiameter;
    bool m_UnitsEnabled;
    int m_LengthUnit;
    double m_UnitFactor;
};

} // namespace transl_tk

#endif
