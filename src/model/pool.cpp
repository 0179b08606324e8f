#include "model/entity.h"

#include <keld-transl/model/pool.h>

#include <algorithm>
#include <utility>

namespace transl_tk {

Pool * Pool::m_Pool = nullptr;

void Pool::construct(std::string const & name)
{
    if (m_Pool == nullptr)
        m_Pool = new Pool;
    m_Pool->newWorkingSubPool(name);
}

void Pool::destruct()
{
    if (m_Pool == nullptr)
        return;
    m_Pool->deleteSubPool(std::string(m_Pool->m_Current));
    if (m_Pool->m_SubPools.empty()) {
        delete m_Pool;
        m_Pool = nullptr;
    }
}

Pool * Pool::getInstance()
{
    return m_Pool;
}

bool Pool::hasInstance()
{
    return m_Pool != nullptr;
}

Pool::Pool(Pool const &) = default;
Pool & Pool::operator=(Pool const &) = default;

Pool::~Pool()
{
    // Entities look for the sub-pool that they leave: it has to be the one that is going.
    for (auto & [name, subPool] : m_SubPools) {
        m_CurrentSubPool = subPool;
        delete std::exchange(subPool, nullptr);
    }
    if (m_Pool == this)
        m_Pool = nullptr;
}

void Pool::makeCurrent(std::string const & name, SubPool * subPool)
{
    m_Current = name;
    m_CurrentSubPool = subPool;
}

std::pair<Pool::iterator, bool> Pool::newWorkingSubPool(std::string const & name)
{
    auto const entry = m_SubPools.try_emplace(name, nullptr).first;
    bool const isNew = entry->second == nullptr;
    if (isNew)
        entry->second = new SubPool;
    makeCurrent(entry->first, entry->second);
    if (!isNew)
        entry->second->clear();
    return {entry, isNew};
}

bool Pool::setCurrent(std::string const & name)
{
    auto const entry = m_SubPools.find(name);
    if (entry == m_SubPools.end())
        return false;
    makeCurrent(entry->first, entry->second);
    return true;
}

std::string const & Pool::getCurrent()
{
    return m_Current;
}

SubPool * Pool::currentSubPool()
{
    return m_CurrentSubPool;
}

bool Pool::searchSubPool(std::string const & name)
{
    return m_SubPools.count(name) != 0;
}

bool Pool::deleteSubPool(std::string const & name)
{
    auto const victim = m_SubPools.find(name);
    if (victim == m_SubPools.end())
        return false;
    std::string const kept = m_Current;
    SubPool * const keptSubPool = m_CurrentSubPool;
    // The entities leave the current sub-pool, so the victim has to be that while they go.
    makeCurrent(victim->first, victim->second);
    delete victim->second;
    makeCurrent(kept, keptSubPool);
    bool const wasCurrent = victim->first == kept;
    m_SubPools.erase(victim);
    if (wasCurrent) {
        if (m_SubPools.empty())
            makeCurrent("DEFAULT", nullptr);
        else
            makeCurrent(m_SubPools.begin()->first, m_SubPools.begin()->second);
    }
    return true;
}

cad::ILoggerPolicy * Pool::logger()
{
    return m_CurrentSubPool->_logger();
}

void Pool::inactiveLogger()
{
    m_CurrentSubPool->inactiveLogger();
}

void Pool::clear()
{
    m_CurrentSubPool->clear();
}

void Pool::uniqueName(std::string & name)
{
    m_CurrentSubPool->uniqueName(name);
}

void Pool::eraseName(std::string const & name)
{
    m_CurrentSubPool->eraseName(name);
}

bool Pool::findFaceToSplit(int id)
{
    return m_CurrentSubPool->findFaceToSplit(id);
}

void CurrentSubPool::leaveOthers(EntityStore SubPool::*store, int id, Base const * entity) noexcept
{
    for (auto const & [name, subPool] : Pool::m_Pool->m_SubPools) {
        if (subPool == nullptr)
            continue;
        IdTree & tree = TableAccess::tree((subPool->*store).m_Entities);
        if (tree.find(id) == entity)
            tree.erase(id);
    }
}

bool CurrentSubPool::holds(EntityStore SubPool::*store, int id, Base const * entity) noexcept
{
    if (Pool::m_Pool == nullptr)
        return false;
    auto const listedIn = [&](SubPool * subPool) {
        return subPool != nullptr &&
               TableAccess::tree((subPool->*store).m_Entities).find(id) == entity;
    };
    if (listedIn(get()))
        return true;
    Pool::SubPools const & all = Pool::m_Pool->m_SubPools;
    return std::any_of(all.begin(), all.end(),
                       [&](auto const & entry) { return listedIn(entry.second); });
}

bool CurrentSubPool::isOnly(SubPool const * subPool) noexcept
{
    Pool const * const pool = Pool::m_Pool;
    return pool != nullptr && pool->m_SubPools.size() == 1 && pool->m_CurrentSubPool == subPool;
}

void CurrentSubPool::leaveOthers(Attribute const * attribute) noexcept
{
    for (auto const & [name, subPool] : Pool::m_Pool->m_SubPools)
        if (subPool != nullptr)
            std::erase(subPool->m_Attributes, attribute);
}

} // namespace transl_tk
