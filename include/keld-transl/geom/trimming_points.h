#ifndef KELD_TRANSL_GEOM_TRIMMING_POINTS_H
#define KELD_TRANSL_GEOM_TRIMMING_POINTS_H

#include <keld-transl/export.h>

namespace geom {

/// The used stretch of a curve: where it starts and ends, and its sense.
///
/// Start and end have three or four components. How many is not kept: every operation that can
/// touch the fourth one is told by its `hasFourth`. A component that was never set holds the
/// largest finite double. The data stay in the process that set them.
///
/// Made with `new`; a curve that it is given to by `setTrimPoints` frees it.
class KELD_TRANSL_EXPORT trimmingPoints
{
public:
    /// All components unset, the sense true.
    explicit trimmingPoints(bool hasFourth);
    trimmingPoints(trimmingPoints const &) = delete;
    /// Refers to the arrays of `other` from now on: only one of the two may be destroyed then, and
    /// the arrays that this object had are nobody's.
    trimmingPoints & operator=(trimmingPoints const & other);
    ~trimmingPoints();

    /// The components, which stay owned by this object and may be written through the pointer.
    double * getStartPoint() const { return m_StartPoint; }
    double * getEndPoint() const { return m_EndPoint; }

    bool getSense() const { return m_Sense; }
    void setSense(bool sense) { m_Sense = sense; }

    /// Copies the first three components of `point`, or four.
    void setStartPoint(double * point, bool hasFourth);
    void setEndPoint(double * point, bool hasFourth);

    /// Sets one component. A `position` that is not below three, or four, is ignored.
    void setStartPointInPos(double value, unsigned short position, bool hasFourth);
    void setEndPointInPos(double value, unsigned short position, bool hasFourth);

private:
    bool m_Sense = true;
    double * m_StartPoint;
    double * m_EndPoint;
};

} // namespace geom

#endif
