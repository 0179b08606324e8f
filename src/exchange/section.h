#ifndef KELD_TRANSL_EXCHANGE_SECTION_H
#define KELD_TRANSL_EXCHANGE_SECTION_H

#include "exchange/model_content.h"
#include "exchange/read_session.h"
#include "exchange/size_counter.h"
#include "exchange/stream_reader.h"
#include "exchange/stream_writer.h"

#include <keld-transl/model/base.h>

#include <span>
#include <string>

namespace transl_tk {

/// One section of the model stream: a counted list of records, and what can be done with it.
struct Section
{
    char const * name;
    void (*count)(SizeCounter & counter, ModelContent const & model);
    void (*write)(StreamWriter & writer, ModelContent const & model);
    void (*read)(StreamReader & reader, ReadSession & session);
};

/// All sections in the order of the stream.
std::span<Section const> sections();

/// A section whose content is put by `Content::put(sink, model)`, once into a `SizeCounter` and
/// once into a `StreamWriter`, and taken by `Content::read(reader, session)`.
template <class Content> constexpr Section makeSection(char const * name)
{
    return {name,
            [](SizeCounter & counter, ModelContent const & model) { Content::put(counter, model); },
            [](StreamWriter & writer, ModelContent const & model) { Content::put(writer, model); },
            &Content::read};
}

/// Destroys an entity that a reading made and that goes again because the reading failed: alone,
/// since whatever it refers to goes by itself.
template <class Record> void undo(Base * entity)
{
    if constexpr (requires { Record::undo(entity); })
        Record::undo(entity);
    else
        Record::Entity::destruct(static_cast<typename Record::Entity *>(entity));
}

/// Notes an entity that a reading has just made, so that it goes again should the reading fail;
/// null, for an id that was taken, is passed over.
template <class Record>
typename Record::Entity * remember(StreamReader const & reader, typename Record::Entity * entity)
{
    reader.session().made(Record::Store, &undo<Record>, entity);
    return entity;
}

/// The same for an entity that must be there, since the rest of its record needs it.
template <class Record>
typename Record::Entity & made(StreamReader const & reader, typename Record::Entity * entity,
                               int id)
{
    if (entity == nullptr)
        reader.fail("the id " + std::to_string(id) + " is taken");
    return *remember<Record>(reader, entity);
}

/// The content of a section that lists all entities of one kind in ascending order of ids.
///
/// A `Record` names the entity class and its store, takes its fields from an entity (`take`), lists
/// them once for counting, writing and reading (`fields`), and makes an entity of them (`make`).
/// Its size is the same for every entity.
template <class Record> struct EntitySection
{
    using Entity = typename Record::Entity;

    static constexpr std::size_t RecordSize = fixedSizeOf<Record>();

    template <class Sink> static void put(Sink & sink, ModelContent const & model)
    {
        EntityTable const & entities = (model.subPool.*Record::Store).m_Entities;
        sink.count(entities.size());
        if constexpr (Sink::CountsOnly) {
            sink.records(entities.size(), RecordSize);
        } else {
            Record record;
            entities.forEach([&](int, Base * entity) {
                record.take(*static_cast<Entity *>(entity));
                record.fields(sink);
            });
        }
    }

    static void read(StreamReader & reader, ReadSession &)
    {
        Record record;
        for (std::size_t left = reader.count(RecordSize); left != 0; --left) {
            reader.beginRecord();
            record.fields(reader);
            remember<Record>(reader, record.make(reader));
        }
    }
};

/// The content of a section that lists all entities of one kind in ascending order of ids, of which
/// each takes as many bytes as it needs.
///
/// A `Record` names the entity class, its store and its smallest size, puts an entity into a
/// counter or a writer (`put`), and makes the next entity from a reader and remembers it (`read`).
template <class Record> struct VariableSection
{
    using Entity = typename Record::Entity;

    template <class Sink> static void put(Sink & sink, ModelContent const & model)
    {
        EntityTable const & entities = (model.subPool.*Record::Store).m_Entities;
        sink.count(entities.size());
        entities.forEach(
            [&](int, Base * entity) { Record::put(sink, *static_cast<Entity *>(entity)); });
    }

    static void read(StreamReader & reader, ReadSession &)
    {
        for (std::size_t left = reader.count(Record::LeastSize); left != 0; --left) {
            reader.beginRecord();
            Record::read(reader);
        }
    }
};

} // namespace transl_tk

#endif
