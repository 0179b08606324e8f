#ifndef KELD_TRANSL_GEOM_TRAITS_GGM_VECTOR_H
#define KELD_TRANSL_GEOM_TRAITS_GGM_VECTOR_H

namespace ggm {

template <int Size, class T> struct Vector;

template <> struct Vector<3, float>
{
    float components[3];

    /// Divides the vector by its length. Prints a critical error when that is 0, and one for each
    /// component that becomes positive infinity, and goes on: the vector is then not finite.
    void unit();
};

} // namespace ggm

#endif
