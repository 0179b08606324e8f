#ifndef KELD_TRANSL_EXCHANGE_RECORDS_TEXT_RECORDS_H
#define KELD_TRANSL_EXCHANGE_RECORDS_TEXT_RECORDS_H

#include "exchange/section.h"

#include <array>

namespace transl_tk {

/// The entries of the report page: text, what it is about, and the type of the entry.
struct ReportEntriesContent
{
    template <class Sink> static void put(Sink & sink, ModelContent const & model)
    {
        sink.count(model.subPool.m_LoggerEntries.size());
        for (HtmlLoggerEntry * const entry : model.subPool.m_LoggerEntries) {
            sink.string(entry->getText());
            sink.i32(entry->getEntityType());
            sink.i32(entry->getEntryType());
        }
    }

    static void read(StreamReader & reader, ReadSession & session);
};

/// The lines of `SubPool::m_TextList`. One is sized and written up to its first zero byte.
struct TextListContent
{
    template <class Sink> static void put(Sink & sink, ModelContent const & model)
    {
        sink.count(model.subPool.m_TextList.size());
        for (std::string const & text : model.subPool.m_TextList)
            sink.string(text.c_str());
    }

    static void read(StreamReader & reader, ReadSession & session);
};

/// The ids of `SubPool::m_FacesToSplit`.
struct FacesToSplitContent
{
    template <class Sink> static void put(Sink & sink, ModelContent const & model)
    {
        sink.count(model.subPool.m_FacesToSplit.size());
        for (int const id : model.subPool.m_FacesToSplit)
            sink.i32(id);
    }

    static void read(StreamReader & reader, ReadSession & session);
};

/// The log. Unlike the other sections it opens with a count for each list that travels; the records
/// do not name their list.
struct LogContent
{
    /// List 5 stays in the process that wrote it.
    static constexpr std::array<cad::ILoggerPolicy::Type, 5> Lists = {1, 2, 3, 4, 6};

    template <class Sink> static void put(Sink & sink, ModelContent const & model)
    {
        for (int const list : Lists) {
            std::size_t entries = 0;
            model.subPool._logger()->for_each_entry(
                list,
                [](char const *, cad::ILoggerPolicy::SubType const &, bool const &, void * count) {
                    ++*static_cast<std::size_t *>(count);
                    return true;
                },
                &entries, cad::ILoggerPolicy::Any, false);
            sink.count(entries);
        }
        for (int const list : Lists)
            model.subPool._logger()->for_each_entry(
                list,
                [](char const * text, cad::ILoggerPolicy::SubType const & subType,
                   bool const & show, void * context) {
                    auto & stream = *static_cast<Sink *>(context);
                    stream.string(text);
                    stream.i32(subType);
                    stream.u8(show);
                    return true;
                },
                &sink, cad::ILoggerPolicy::Any, false);
    }

    static void read(StreamReader & reader, ReadSession & session);
};

} // namespace transl_tk

#endif
