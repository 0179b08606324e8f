#ifndef KELD_TESTS_STREAM_WHOLE_MODEL_DESCRIPTION_H
#define KELD_TESTS_STREAM_WHOLE_MODEL_DESCRIPTION_H

#include "stream/topology_description.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace tests {

/// All values of a model in plain lists: floating-point numbers as bits, references as ids.
struct WholeModelDescription
{
    /// Id and kind of an entity.
    using Reference = std::pair<int, int>;

    struct Value
    {
        int type = 0; ///< 0 for a value that is not there
        std::string text;
        std::uint64_t bits = 0;

        bool operator==(Value const &) const = default;
    };
    struct Node
    {
        int type = 0;
        int tag = 0;
        std::string name;
        std::vector<int> children;
        std::vector<std::pair<int, std::vector<Value>>> parameters;
        std::vector<Reference> entities;
        std::vector<std::pair<std::string, Value>> properties;

        bool operator==(Node const &) const = default;
    };
    struct Hierarchy
    {
        int parent = -1;
        std::array<std::uint64_t, 16> transform{};

        bool operator==(Hierarchy const &) const = default;
    };
    struct Component
    {
        Hierarchy hierarchy;
        std::string name;
        std::string firstLabel;
        std::string secondLabel;
        int lengthType = 1;
        std::uint64_t lengthScale = 0;
        int angularType = 2;
        std::uint64_t angularScale = 0;

        bool operator==(Component const &) const = default;
    };
    struct Assembly
    {
        Component component;
        std::vector<int> children;

        bool operator==(Assembly const &) const = default;
    };
    struct Part
    {
        Component component;
        std::string label;
        std::vector<int> topNodes;
        std::map<int, Node> nodes;
        /// Bodies, points, spot welds, coordinate systems, facets, curves, edges, annotations.
        std::array<std::vector<int>, 8> lists;

        bool operator==(Part const &) const = default;
    };
    struct Instance
    {
        Hierarchy hierarchy;
        int component = -1;

        bool operator==(Instance const &) const = default;
    };
    struct Annotation
    {
        std::vector<std::uint64_t> values;
        std::vector<int> numbers;
        std::array<std::string, 2> texts;

        bool operator==(Annotation const &) const = default;
    };
    struct Attribute
    {
        std::string name;
        int type = 0;
        std::vector<Value> values;
        std::vector<Reference> entities;

        bool operator==(Attribute const &) const = default;
    };
    struct ReportEntry
    {
        std::string text;
        int entityType = 0;
        int entryType = 0;

        bool operator==(ReportEntry const &) const = default;
    };
    struct LogEntry
    {
        std::string text;
        int subType = 0;
        bool shown = false;

        bool operator==(LogEntry const &) const = default;
    };

    ModelDescription topology;
    std::map<int, Annotation> annotations;
    std::map<int, Assembly> assemblies;
    std::map<int, Part> parts;
    std::map<int, Instance> instances;
    std::vector<Attribute> attributes;
    std::vector<ReportEntry> reportEntries;
    std::vector<std::string> texts;
    std::vector<int> facesToSplit;
    std::array<std::vector<LogEntry>, 7> log; ///< by the number of the list
    /// Objects that stand in the trees of more than one part.
    int nodesOfSeveralParts = 0;
    /// Whether each tree has one object for each id.
    bool isOneNodePerId = true;

    bool operator==(WholeModelDescription const &) const = default;
};

/// What the getters of everything in the current sub-pool tell.
WholeModelDescription descriptionOfWholeModel();

} // namespace tests

#endif
