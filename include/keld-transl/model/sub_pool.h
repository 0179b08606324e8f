#ifndef KELD_TRANSL_MODEL_SUB_POOL_H
#define KELD_TRANSL_MODEL_SUB_POOL_H

#include <keld-transl/model/entity_store.h>

#include <cstddef>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace cad {
class ILoggerPolicy;
}

namespace transl_tk {

class Attribute;
class HtmlLoggerEntry;

/// One whole model: every entity by kind and id, the names in use, the attributes, the report
/// entries and the log of the run. A sub-pool owns what stands in it.
///
/// One thread at a time works on a model; nothing here is locked.
class KELD_TRANSL_EXPORT SubPool
{
public:
    /// An empty model with a `Logger`.
    SubPool();
    SubPool(SubPool const &);
    SubPool & operator=(SubPool const &);
    /// Empties the model and frees its log. The sub-pool must be the current one.
    ~SubPool();

    /// The log of this model. It stays owned by the sub-pool.
    cad::ILoggerPolicy * _logger();

    /// Replaces the log by one that swallows everything.
    void inactiveLogger();

    /// 0 at the first call in a process, then 1, 2, ... For code outside this library: no entity's
    /// id is drawn from it.
    static unsigned int GetAvailableId();

    /// Destroys every entity, attribute and report entry and empties the log, top-down: a parent
    /// goes before what it holds. The sub-pool must be the current one. `m_TextList` and
    /// `m_FacesToSplit` stay.
    void clear();

    /// Makes `name` unlike all names in use and takes it into use. The first holder of a name
    /// keeps it; a later one loses what stands behind its last "@", that character included, and
    /// gets "@1", or the first higher number that is free.
    void uniqueName(std::string & name);

    /// Frees a name; one that is not in use is no fault.
    void eraseName(std::string const & name);

    /// Whether `id` stands in `m_FacesToSplit`, which must be sorted (`Pool::getSize` sorts it).
    bool findFaceToSplit(int id);

    EntityStore m_Points;
    EntityStore m_Curves3D;
    EntityStore m_UVCurves;
    EntityStore m_Surfaces;
    EntityStore m_Vertices;
    EntityStore m_Edges;
    EntityStore m_Fins;
    EntityStore m_Loops;
    EntityStore m_Faces;
    EntityStore m_Shells;
    EntityStore m_Bodies;
    EntityStore m_Hierarchies; ///< assemblies, parts and instances, in one range of ids
    EntityStore m_TriStrips;
    EntityStore m_SpotWelds;
    EntityStore m_CartesianCoords;
    EntityStore m_Annotations;

    cad::ILoggerPolicy * m_Logger; ///< owned
    /// Names of components in use. Who changes the set by hand may add and remove; but after a name
    /// "stem@number" was removed and another name added, with no call of `uniqueName` or
    /// `eraseName` between, `uniqueName` may pass over that number.
    std::unordered_set<std::string> m_Names;

    std::vector<Attribute *> m_Attributes;          ///< owned, in order of creation
    std::vector<HtmlLoggerEntry *> m_LoggerEntries; ///< owned, in order of creation

    /// Lines of text that travel with the model. Filled by the host or translator.
    std::vector<std::string> m_TextList;

    /// Ids of faces that the receiving side is to split. Filled by the host or translator;
    /// `Pool::getSize` sorts the list and drops what stands in it twice.
    std::vector<int> m_FacesToSplit;

    /// The number that `GetAvailableId` gives next.
    static unsigned int m_AvailableId;

private:
    void forgetNumbersWhenNamesChanged();

    /// By stem, a number that no free one stands below: so that names which clash again and again
    /// need not count from 1 each time. Stems that are missing start at 1.
    std::unordered_map<std::string, unsigned long long> m_FirstFreeNumbers;
    std::size_t m_KnownNames = 0; ///< size of `m_Names` when those numbers were right
};

} // namespace transl_tk

#endif
