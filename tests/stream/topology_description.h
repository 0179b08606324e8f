#ifndef KELD_TESTS_STREAM_TOPOLOGY_DESCRIPTION_H
#define KELD_TESTS_STREAM_TOPOLOGY_DESCRIPTION_H

#include "stream/random_shapes.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tests {

/// All values of a model in plain lists: floating-point numbers as bits, references as ids, -1 for
/// null and for what has died.
struct ModelDescription
{
    struct Strip
    {
        bool flag = false;
        std::vector<std::uint32_t> vertices;
        std::vector<unsigned char> colours;
        std::vector<std::uint32_t> normals;
        std::vector<int> indices;

        bool operator==(Strip const &) const = default;
    };
    /// A point, or a parameter alone.
    struct Vertex
    {
        std::vector<std::uint64_t> values;

        bool operator==(Vertex const &) const = default;
    };
    struct Edge
    {
        int curve = -1;
        int start = -1;
        int end = -1;
        bool sense = false;

        bool operator==(Edge const &) const = default;
    };
    struct Fin
    {
        int edge = -1;
        int uvCurve = -1;
        bool sense = false;

        bool operator==(Fin const &) const = default;
    };
    struct Face
    {
        std::string label;
        bool sense = false;
        int surface = -1;
        std::vector<int> loops;

        bool operator==(Face const &) const = default;
    };
    struct Shell
    {
        bool flag = false;
        std::vector<int> faces;

        bool operator==(Shell const &) const = default;
    };
    struct Body
    {
        std::string name;
        std::vector<int> shells;
        std::vector<int> strips;

        bool operator==(Body const &) const = default;
    };

    std::map<int, Strip> strips;
    std::map<int, std::array<std::uint64_t, 3>> points;
    std::map<int, std::vector<std::string>> weldNames;
    Shapes shapes;
    std::map<int, Vertex> vertices;
    std::map<int, Edge> edges;
    std::map<int, Fin> fins;
    std::map<int, std::vector<int>> loops;
    std::map<int, Face> faces;
    std::map<int, Shell> shells;
    std::map<int, Body> bodies;

    bool operator==(ModelDescription const &) const = default;
};

/// What the getters of the entities of the current sub-pool tell.
ModelDescription descriptionOfModel();

} // namespace tests

#endif
