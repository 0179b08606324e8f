#ifndef KELD_TRANSL_MODEL_POOL_H
#define KELD_TRANSL_MODEL_POOL_H

#include <keld-transl/model/sub_pool.h>

#include <map>
#include <string>
#include <utility>

namespace transl_tk {

/// The process-wide store of models: any number of named sub-pools, one of them current. All
/// `create` functions and all entities' destruction work on the current sub-pool.
///
/// One thread at a time works on it, and a switch of the current sub-pool affects the whole
/// process. Operations other than the statics, `setCurrent`, `searchSubPool`, `newWorkingSubPool`
/// and `deleteSubPool` need a current sub-pool.
class KELD_TRANSL_EXPORT Pool
{
public:
    using SubPools = std::map<std::string, SubPool *>;
    using iterator = SubPools::iterator;

    /// Makes the pool when there is none, then makes `name` the current sub-pool as
    /// `newWorkingSubPool` does.
    static void construct(std::string const & name);

    /// Ends the current sub-pool and, with the last one, the pool. Without a pool nothing happens.
    static void destruct();

    /// The pool, null when there is none.
    static Pool * getInstance();
    static bool hasInstance();

    Pool(Pool const &);
    Pool & operator=(Pool const &);
    /// Frees every sub-pool that is left.
    ~Pool();

    /// Makes an empty sub-pool `name` and the current one. A sub-pool of that name that exists is
    /// emptied instead. Returns the entry and whether it is new.
    std::pair<iterator, bool> newWorkingSubPool(std::string const & name);

    /// Makes `name` the current sub-pool. False, and no change, when there is none of that name.
    bool setCurrent(std::string const & name);

    /// Name of the current sub-pool; empty in a fresh pool.
    std::string const & getCurrent();

    /// The current sub-pool, null when there is none. It stays owned by the pool.
    SubPool * currentSubPool();

    bool searchSubPool(std::string const & name);

    /// Frees the sub-pool `name` with all that stands in it. When it was the current one, the first
    /// one left, in order of the names' bytes, becomes current. False when there is none of that
    /// name.
    bool deleteSubPool(std::string const & name);

    /// The log of the current model, owned by it.
    cad::ILoggerPolicy * logger();

    /// As the operations of the current `SubPool`.
    void inactiveLogger();
    void clear();
    void uniqueName(std::string & name);
    void eraseName(std::string const & name);
    bool findFaceToSplit(int id);

    /// Size in bytes of the model stream of the current sub-pool, exactly what
    /// `Server::writeSharedMem` writes. Sorts `m_FacesToSplit` and drops what stands in it twice. 0
    /// and an `Error` line for a model with an assembly that is its own descendant.
    long long getSize();

private:
    friend class CurrentSubPool;
    Pool() = default;

    static Pool * m_Pool;

    void makeCurrent(std::string const & name, SubPool * subPool);

    SubPools m_SubPools;
    std::string m_Current;
    SubPool * m_CurrentSubPool = nullptr; ///< what `m_Current` names; kept in step with it
};

} // namespace transl_tk

#endif
