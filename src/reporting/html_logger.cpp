#include "model/entity.h"

#include <keld-transl/product/assembly.h>
#include <keld-transl/product/gather_hierarchies.h>
#include <keld-transl/product/traverse_hierarchy.h>
#include <keld-transl/reporting/html_logger.h>

#include <algorithm>
#include <memory>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace transl_tk {

namespace {

struct CountedStore
{
    HtmlLoggerEntry::EntityType type;
    EntityStore SubPool::*store;
};

constexpr CountedStore countedStores[] = {
    {HtmlLoggerEntry::Point, &SubPool::m_Points},
    {HtmlLoggerEntry::CoordinateSystem, &SubPool::m_CartesianCoords},
    {HtmlLoggerEntry::Curve, &SubPool::m_Curves3D},
    {HtmlLoggerEntry::UVCurve, &SubPool::m_UVCurves},
    {HtmlLoggerEntry::Edge, &SubPool::m_Edges},
    {HtmlLoggerEntry::Fin, &SubPool::m_Fins},
    {HtmlLoggerEntry::Loop, &SubPool::m_Loops},
    {HtmlLoggerEntry::Shell, &SubPool::m_Shells},
    {HtmlLoggerEntry::Surface, &SubPool::m_Surfaces},
    {HtmlLoggerEntry::Face, &SubPool::m_Faces},
    {HtmlLoggerEntry::Facet, &SubPool::m_TriStrips},
    {HtmlLoggerEntry::Body, &SubPool::m_Bodies},
    {HtmlLoggerEntry::Welds, &SubPool::m_SpotWelds},
    {HtmlLoggerEntry::Annotations, &SubPool::m_Annotations},
};

constexpr int idOfMadeAssembly = -1;
constexpr HtmlLogger::status_type statusWithoutModelName{2};
constexpr unsigned absent = 0xFFFFFFFF;

std::string shownName(Hierarchy * node)
{
    char const * const name = Hierarchy::name(node);
    return name != nullptr ? name : "";
}

/// Writes the fragments of a product tree.
class TreeText
{
public:
    std::string write(Assembly * top)
    {
        TraverseHierarchy walk;
        walk.setPreActionCB([](Hierarchy * node, void * self) {
            static_cast<TreeText *>(self)->enter(node);
            return true;
        });
        walk.setPostActionCB([](Hierarchy *, void * self) {
            --static_cast<TreeText *>(self)->m_Depth;
            return true;
        });
        walk.traverse(top, this);
        return std::move(m_Text);
    }

private:
    /// Deeper nodes are not indented further: the blanks would outgrow the model by far.
    static constexpr std::size_t DeepestIndentation = 1000;

    void enter(Hierarchy * node)
    {
        ++m_Depth;
        m_Text += "<pre align=\"left\">";
        m_Text.append(4 + 4 * std::min(m_Depth, DeepestIndentation), ' ');
        m_Text += shownName(node);
        m_Text += kindOf(node);
        m_Text += "<br></pre>";
    }

    static char const * kindOf(Hierarchy * node)
    {
        switch (node->getHierarchyType()) {
        case Hierarchy::Part:
            return "(part)";
        case Hierarchy::Assembly:
            return "(assembly)";
        case Hierarchy::Instance:
            return "(instance)";
        }
        return "";
    }

    std::string m_Text;
    std::size_t m_Depth = 0;
};

class ProxyHtmlLogger final : public HtmlLogger
{
public:
    ProxyHtmlLogger(std::string const & fileName, status_type status);
    ProxyHtmlLogger(ProxyHtmlLogger const &) = delete;
    ProxyHtmlLogger & operator=(ProxyHtmlLogger const &) = delete;
    ~ProxyHtmlLogger() override;

    bool forEachEntry(bool (*callback)(HtmlLoggerEntry *, void *), void * context) override;
    std::string getFileName() override { return m_FileName; }
    status_type getStatus() override { return m_Status; }
    std::string getTreeText() override { return m_TreeText; }
    std::string getModelName() override { return m_ModelName; }
    void addEntry(HtmlLoggerEntry * entry) override;
    void setEntityCount(EntityType const & type, unsigned const & count) override;
    void setFailedCount(EntityType const & type, unsigned const & count) override;
    unsigned getEntityCount(EntityType const & type) override;
    unsigned getFailedCount(EntityType const & type) override;
    bool hasEntity(EntityType const & type) override;
    unsigned getEntryCount(EntryType const & type) override;

private:
    using Counts = std::unordered_map<EntityType, unsigned>;

    static unsigned countIn(Counts const & counts, EntityType type);

    void countEntities(SubPool const & subPool);
    void nameModel();

    Counts m_EntityCounts;
    Counts m_FailedCounts;
    std::unordered_set<EntityType> m_ReportedKinds;
    unsigned m_EntryCount1 = 0;
    unsigned m_EntryCount2 = 0;
    unsigned m_EntryCount0 = 0;
    std::vector<HtmlLoggerEntry *> m_Entries;
    std::string m_FileName;
    std::string m_ModelName;
    std::string m_TreeText;
    status_type m_Status;
};

ProxyHtmlLogger::ProxyHtmlLogger(std::string const & fileName, status_type status)
    : m_FileName(fileName), m_Status(status)
{
    SubPool * const subPool = CurrentSubPool::get();
    if (subPool == nullptr) {
        m_ModelName = fileName;
        return;
    }
    countEntities(*subPool);
    for (HtmlLoggerEntry * const entry : subPool->m_LoggerEntries)
        addEntry(HtmlLoggerEntry::extract(entry->getText(), entry->getEntityType(),
                                          entry->getEntryType()));
    nameModel();
}

ProxyHtmlLogger::~ProxyHtmlLogger()
{
    for (HtmlLoggerEntry * const entry : m_Entries)
        HtmlLoggerEntry::destruct(entry);
}

void ProxyHtmlLogger::countEntities(SubPool const & subPool)
{
    std::vector<Assembly *> assemblies;
    std::vector<Part *> parts;
    std::vector<Instance *> instances;
    GatherHierarchies gather(assemblies, parts, instances);
    subPool.m_Hierarchies.m_Entities.forEach(
        [&](int id, Base * entity) { gather(std::pair(id, entity)); });
    auto const set = [&](EntityType type, std::size_t count) {
        m_EntityCounts[type] = static_cast<unsigned>(count);
    };
    set(HtmlLoggerEntry::Assembly, assemblies.size());
    set(HtmlLoggerEntry::Part, parts.size());
    set(HtmlLoggerEntry::Instance, instances.size());
    for (auto const & [type, store] : countedStores)
        set(type, (subPool.*store).m_Entities.size());
    set(HtmlLoggerEntry::Attributes, subPool.m_Attributes.size());
}

void ProxyHtmlLogger::nameModel()
{
    Assembly * const top = Hierarchy::getTopAssembly();
    if (top == nullptr) {
        if (m_Status != statusWithoutModelName)
            m_ModelName = m_FileName;
    } else if (top->getId() == idOfMadeAssembly) {
        top->forEachChild(
            [](Hierarchy * child, void * name) {
                *static_cast<std::string *>(name) = shownName(child);
                return true;
            },
            &m_ModelName);
    } else {
        m_TreeText = TreeText().write(top);
        m_ModelName = top->getName();
    }
}

bool ProxyHtmlLogger::forEachEntry(bool (*callback)(HtmlLoggerEntry *, void *), void * context)
{
    return std::all_of(m_Entries.begin(), m_Entries.end(),
                       [&](HtmlLoggerEntry * entry) { return callback(entry, context); });
}

void ProxyHtmlLogger::addEntry(HtmlLoggerEntry * entry)
{
    if (entry == nullptr)
        return;
    m_ReportedKinds.insert(entry->getEntityType());
    m_Entries.push_back(entry);
    switch (static_cast<int>(entry->getEntryType())) {
    case 0:
        ++m_EntryCount0;
        break;
    case 1:
        ++m_EntryCount1;
        break;
    case 2:
        ++m_EntryCount2;
        break;
    default:
        break;
    }
}

void ProxyHtmlLogger::setEntityCount(EntityType const & type, unsigned const & count)
{
    m_EntityCounts[type] = count;
}

void ProxyHtmlLogger::setFailedCount(EntityType const & type, unsigned const & count)
{
    m_FailedCounts[type] = count;
}

unsigned ProxyHtmlLogger::countIn(Counts const & counts, EntityType type)
{
    auto const found = counts.find(type);
    return found != counts.end() ? found->second : absent;
}

unsigned ProxyHtmlLogger::getEntityCount(EntityType const & type)
{
    return countIn(m_EntityCounts, type);
}

unsigned ProxyHtmlLogger::getFailedCount(EntityType const & type)
{
    return countIn(m_FailedCounts, type);
}

bool ProxyHtmlLogger::hasEntity(EntityType const & type)
{
    unsigned const held = m_EntityCounts[type];
    unsigned const failed = m_FailedCounts[type];
    return held != 0 || failed != 0 || m_ReportedKinds.count(type) != 0;
}

unsigned ProxyHtmlLogger::getEntryCount(EntryType const & type)
{
    switch (static_cast<int>(type)) {
    case 0:
        return m_EntryCount0;
    case 1:
        return m_EntryCount1;
    case 2:
        return m_EntryCount2;
    default:
        return 0;
    }
}

} // namespace

HtmlLogger::~HtmlLogger() = default;

HtmlLogger * HtmlLogger::create(std::string const & fileName, status_type const & status)
{
    return new ProxyHtmlLogger(fileName, status);
}

void HtmlLogger::destruct(HtmlLogger * logger)
{
    delete logger;
}

} // namespace transl_tk
