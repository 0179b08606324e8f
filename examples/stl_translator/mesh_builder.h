#ifndef KELD_EXAMPLES_MESH_BUILDER_H
#define KELD_EXAMPLES_MESH_BUILDER_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace stl {

/// Three coordinates of a corner in the bits of floats.
struct Corner
{
    std::uint32_t x, y, z;

    friend bool operator==(Corner const &, Corner const &) = default;
};

/// Vertices that all differ, and three indices for each triangle.
struct Mesh
{
    std::vector<Corner> vertices;
    std::vector<int> indices;
};

/// Puts the corners of triangles together to a mesh, in which equal corners are one vertex.
class MeshBuilder
{
public:
    /// Reserves memory for a closed mesh of so many triangles; more may come.
    explicit MeshBuilder(std::size_t triangles);

    /// Takes the next corners, in any number. No coordinate may be -0.
    void add(Corner const * corners, std::size_t count);

    std::size_t cornerCount() const { return m_Mesh.indices.size(); }

    /// The mesh; the builder is of no use afterwards.
    Mesh take() { return std::move(m_Mesh); }

private:
    void addBlock(Corner const * corners, std::size_t count);
    std::size_t slotOf(Corner const & corner) const;
    void growTable();

    Mesh m_Mesh;
    std::vector<std::uint32_t> m_Slots; ///< index of a vertex plus 1, 0 where free; a power of two
    int m_Shift;                        ///< takes a hash down to a slot
};

} // namespace stl

#endif
