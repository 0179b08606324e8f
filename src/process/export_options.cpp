#include <keld-transl/process/export_options.h>

#include <cstring>

namespace transl_tk {

ExportOptions::ExportOptions() : ExportOptions(0, ConvertDefaultOn) {}

ExportOptions::ExportOptions(unsigned int exportFlags, unsigned int convertFlags)
    : m_ExportFlags(exportFlags), m_ConvertFlags(convertFlags), m_Transform{{1, 0, 0, 0},
                                                                            {0, 1, 0, 0},
                                                                            {0, 0, 1, 0},
                                                                            {0, 0, 0, 1}},
      m_SpotweldDiameter(10.0), m_UnitsEnabled(false), m_LengthUnit(0), m_UnitFactor(1.0)
{}

bool ExportOptions::isOn(Export_FLAGS flag) const
{
    return (m_ExportFlags & flag) == flag;
}

bool ExportOptions::isOn(Convert_FLAGS flag) const
{
    return (m_ConvertFlags & flag) == flag;
}

void ExportOptions::set(Export_FLAGS flag, bool const & on)
{
    set(m_ExportFlags, flag, on);
}

void ExportOptions::set(Convert_FLAGS flag, bool const & on)
{
    set(m_ConvertFlags, flag, on);
}

void ExportOptions::set(unsigned int & word, unsigned int flag, bool const & on)
{
    if (on)
        word |= flag;
    else
        word &= ~flag;
}

bool ExportOptions::exportPartGeometry() const
{
    return (m_ExportFlags & ExportPartGeometry) != 0;
}

void ExportOptions::getTransform(double (&transform)[4][4]) const
{
    std::memcpy(transform, m_Transform, sizeof(transform));
}

void ExportOptions::setTransform(double const (&transform)[4][4])
{
    std::memcpy(m_Transform, transform, sizeof(m_Transform));
}

double ExportOptions::getSpotweldDiameter() const
{
    return m_SpotweldDiameter;
}

void ExportOptions::setSpotweldDiameter(double const & diameter)
{
    m_SpotweldDiameter = diameter;
}

void ExportOptions::getUnits(bool & enabled, int & lengthUnit, double & factor) const
{
    enabled = m_UnitsEnabled;
    lengthUnit = m_LengthUnit;
    factor = m_UnitFactor;
}

void ExportOptions::setUnits(bool const & enabled, int const & lengthUnit, double const & factor)
{
    m_UnitsEnabled = enabled;
    m_LengthUnit = lengthUnit;
    m_UnitFactor = factor;
}

} // namespace transl_tk
