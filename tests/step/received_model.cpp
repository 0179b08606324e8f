#include "step/received_model.h"

#include "export/shape_builder.h"
#include "support/segments.h"

#include <keld-transl/attributes/attribute.h>
#include <keld-transl/attributes/value.h>
#include <keld-transl/model/pool.h>
#include <keld-transl/process/client_in.h>
#include <keld-transl/product/assembly.h>
#include <keld-transl/product/instance.h>
#include <keld-transl/product/part.h>
#include <keld-transl/reporting/html_logger_entry.h>
#include <keld-transl/reporting/logger_policy.h>
#include <keld-transl/topology/body.h>
#include <keld-transl/topology/shell.h>

#include <BRep_Builder.hxx>
#include <TopLoc_Location.hxx>
#include <TopoDS_Compound.hxx>
#include <gp_Trsf.hxx>
#include <sstream>

namespace tests {

namespace {

using transl_tk::Assembly;
using transl_tk::Component;
using transl_tk::Hierarchy;
using transl_tk::Instance;
using transl_tk::IOption;
using transl_tk::IValue;
using transl_tk::Part;
using transl_tk::Pool;

class Host : public transl_tk::ClientIn
{
public:
    explicit Host(std::map<std::string, double> const & options)
        : m_Segment(segmentName()), m_Options(options)
    {}

    std::string getExecCmd() override { return KELD_TEST_STEP_TRANSLATOR; }
    std::string getLibPath() override { return {}; }
    std::string getSharedMemName() override { return m_Segment; }
    void setProgress(int const &) override {}
    void setStatus(int const &) override {}
    bool confirmImport() override { return true; }
    void importStarted() override {}
    void transferModel() override {}
    void fillOptions() override
    {
        getExecIO()->addOption(IOption::create("host", IValue::create("test"), ""));
        for (auto const & [name, value] : m_Options)
            getExecIO()->addOption(IOption::create(name.c_str(), IValue::create(value), ""));
    }

private:
    std::string m_Segment;
    std::map<std::string, double> const & m_Options;
};

gp_Trsf transformOf(Hierarchy & node)
{
    double m[16];
    node.getTransform(m);
    gp_Trsf result;
    result.SetValues(m[0], m[4], m[8], m[12], m[1], m[5], m[9], m[13], m[2], m[6], m[10], m[14]);
    return result;
}

/// Makes the shapes of components, each once.
class Rebuilding
{
public:
    explicit Rebuilding(transl_tk::SubPool & model) : m_Builder(model, m_Coverage) {}

    TopoDS_Shape shapeOf(Component & component)
    {
        TopoDS_Shape & known = m_Shapes[&component];
        if (!known.IsNull())
            return known;
        if (component.getHierarchyType() == Hierarchy::Part)
            return known = m_Builder.shapeOf(static_cast<Part &>(component));
        TopoDS_Compound compound;
        BRep_Builder().MakeCompound(compound);
        std::pair<Rebuilding *, TopoDS_Compound *> context(this, &compound);
        static_cast<Assembly &>(component).forEachChild(
            [](Hierarchy * child, void * user) {
                auto & [self, target] =
                    *static_cast<std::pair<Rebuilding *, TopoDS_Compound *> *>(user);
                auto * const instance = static_cast<Instance *>(child);
                TopoDS_Shape const placed = self->shapeOf(*instance->getComponent());
                BRep_Builder().Add(*target, placed.Moved(TopLoc_Location(transformOf(*instance))));
                return true;
            },
            &context);
        return m_Shapes[&component] = compound;
    }

    std::vector<std::string> const & faults() const { return m_Builder.faults(); }

private:
    step::Coverage m_Coverage;
    step::ShapeBuilder m_Builder;
    std::map<Component *, TopoDS_Shape> m_Shapes;
};

std::string wordsOf(IValue & value)
{
    std::ostringstream words;
    switch (value.getType()) {
    case 1: {
        char * text = nullptr;
        value.getValue(text);
        words << text;
        break;
    }
    case 2: {
        int number = 0;
        value.getValue(number);
        words << number;
        break;
    }
    case 5: {
        double number = 0;
        value.getValue(number);
        words << number;
        break;
    }
    case 6: {
        unsigned char byte = 0;
        value.getValue(byte);
        words << static_cast<int>(byte);
        break;
    }
    default:
        words << "?";
    }
    return words.str();
}

} // namespace

std::string wordsOf(transl_tk::Attribute const & attribute)
{
    std::string words = attribute.getName();
    for (int i = 0; i < attribute.getNumValues(); ++i)
        words += " " + wordsOf(*attribute.getValue(i));
    return words;
}

ReceivedModel::ReceivedModel(std::string const & path,
                             std::map<std::string, double> const & options)
{
    Host host(options);
    host.read(path, 1);
    m_Status = host.serverExitStatus();
    if (!Pool::hasInstance())
        Pool::construct(path);
}

ReceivedModel::~ReceivedModel()
{
    while (Pool::hasInstance())
        Pool::destruct();
}

transl_tk::SubPool & ReceivedModel::model() const
{
    return *Pool::getInstance()->currentSubPool();
}

std::string ReceivedModel::log() const
{
    return model()._logger()->GetEntriesOfType(1, cad::ILoggerPolicy::Any, true, false);
}

std::vector<std::string> ReceivedModel::entries(int type) const
{
    std::vector<std::string> result;
    for (auto * const entry : model().m_LoggerEntries) {
        if (entry->getEntryType() == type)
            result.emplace_back(entry->getText());
    }
    return result;
}

Counts ReceivedModel::counts() const
{
    Counts result;
    model().m_Bodies.m_Entities.forEach([&](int, transl_tk::Base * entity) {
        bool solid = false;
        static_cast<transl_tk::Body *>(entity)->forEachShell(
            [](transl_tk::Shell * shell, void * user) {
                *static_cast<bool *>(user) = shell->getShellFlag();
                return true;
            },
            &solid);
        result.solids += solid ? 1 : 0;
    });
    result.faces = model().m_Faces.m_Entities.size();
    result.edges = model().m_Edges.m_Entities.size();
    result.vertices = model().m_Vertices.m_Entities.size() + model().m_Points.m_Entities.size();
    return result;
}

std::multiset<std::string> ReceivedModel::productNames() const
{
    std::multiset<std::string> result;
    model().m_Hierarchies.m_Entities.forEach([&](int, transl_tk::Base * entity) {
        auto * const node = static_cast<Hierarchy *>(entity);
        if (node->getHierarchyType() != Hierarchy::Instance)
            result.insert(static_cast<Component *>(node)->getSecondLabel());
    });
    return result;
}

std::multiset<std::string> ReceivedModel::attributes(int number) const
{
    std::multiset<std::string> result;
    for (auto * const attribute : model().m_Attributes) {
        if (attribute->getType() != number)
            continue;
        result.insert(wordsOf(*attribute));
    }
    return result;
}

TopoDS_Shape ReceivedModel::rebuilt(std::vector<std::string> & faults) const
{
    Rebuilding rebuilding(model());
    TopoDS_Compound compound;
    BRep_Builder builder;
    builder.MakeCompound(compound);
    std::vector<Hierarchy *> tops;
    Hierarchy::gatherTopLevelHierarchies(tops);
    for (Hierarchy * const top : tops) {
        // A component that is placed by instances alone counts among the tops, too.
        bool placed = false;
        auto * const component = static_cast<Component *>(top);
        component->forEachInstance(
            [](Instance *, void * user) {
                *static_cast<bool *>(user) = true;
                return true;
            },
            &placed);
        if (!placed)
            builder.Add(compound, rebuilding.shapeOf(*component));
    }
    faults = rebuilding.faults();
    return compound;
}

} // namespace tests
