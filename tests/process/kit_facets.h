#ifndef KELD_TESTS_KIT_FACETS_H
#define KELD_TESTS_KIT_FACETS_H

#include <string>

namespace tests {

/// Fills the current sub-pool with what the name says:
///
///   facets        a body "band" with a strip of two bands, 3 triangles and 4 joins between them;
///                 a body "a<line feed>list" with 2 triangles on 4 vertices, one of them of no
///                 area; a mesh of 1 triangle without a body; a body without meshes
///   some-facets   a mesh of 4 triangles and one index more, of which the second has an index
///                 beyond the vertices, the third a negative one, the fourth a corner without a
///                 place
///   many-facets   20 triangles with an index beyond the vertices, and a good one
///   bad-facets    a triangle with a corner without a place
///   placed-facets   a red part of one triangle, (0 0 0), (1 0 0), (0 0 1), at (0.5 0 0) and, blue
///   and
///                   with its first axis turned, at (-0.5 0 0); and a green triangle (0 0 2),
///                   (1 0 2), (0 0 3) with normals that belongs to no part
///   crowded-facets  a part of 1000 triangles at 2001 places
///   no-facets     a body without meshes, and a mesh of two vertices
void makeFacets(std::string const & name);

} // namespace tests

#endif
