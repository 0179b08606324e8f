#ifndef KELD_TRANSL_EXCHANGE_RECORDS_ATTACHMENT_LIST_H
#define KELD_TRANSL_EXCHANGE_RECORDS_ATTACHMENT_LIST_H

#include "exchange/read_session.h"
#include "exchange/stream_reader.h"
#include "model/entity_kinds.h"

namespace transl_tk {

/// Puts the entities that an attribute or a node refers to, as far as they live: twice their
/// number, and id and kind of each.
template <class Sink, class Holder> void putAttachments(Sink & sink, Holder & holder)
{
    std::size_t entities = 0;
    holder.forEachEntity(
        [](Base *, void * count) {
            ++*static_cast<std::size_t *>(count);
            return true;
        },
        &entities);
    sink.count(2 * entities);
    if constexpr (Sink::CountsOnly)
        sink.records(entities, 8);
    else
        holder.forEachEntity(
            [](Base * entity, void * stream) {
                static_cast<Sink *>(stream)->i32(entity->getId());
                static_cast<Sink *>(stream)->i32(entity->getEntityKind());
                return true;
            },
            &sink);
}

/// The entity that a reference names, null when the model does not have it. A UV curve is never
/// found: references to them are written and not followed.
inline Base * resolveReference(SubPool & subPool, int id, int kind)
{
    EntityStore SubPool::*const store = kind != EntityKindUVCurve ? storeOfKind(kind) : nullptr;
    return store != nullptr ? (subPool.*store).m_Entities.lookup(id) : nullptr;
}

/// Reads what `putAttachments` put, and adds those entities to an attribute or a node that the
/// model has.
template <class Holder> void readAttachments(StreamReader & reader, Holder & holder)
{
    std::size_t const numbers = reader.count(4);
    for (std::size_t read = 0; read < numbers; read += 2) {
        int id = 0;
        int kind = 0;
        reader.i32(id);
        reader.i32(kind);
        if (Base * const entity = resolveReference(reader.session().subPool(), id, kind))
            holder.addEntity(entity);
    }
}

} // namespace transl_tk

#endif
