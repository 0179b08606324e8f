#include "exchange/records/text_records.h"

namespace transl_tk {

void ReportEntriesContent::read(StreamReader & reader, ReadSession & session)
{
    constexpr std::size_t LeastSize = 12;
    for (std::size_t left = reader.count(LeastSize); left != 0; --left) {
        reader.beginRecord();
        ReadSession::ReportEntry & entry = session.m_ReportEntries.emplace_back();
        int entityType = 0;
        int entryType = 0;
        reader.string(entry.text);
        reader.i32(entityType);
        reader.i32(entryType);
        entry.entityType = static_cast<HtmlLoggerEntry::EntityType>(entityType);
        entry.entryType = static_cast<HtmlLoggerEntry::EntryType>(entryType);
    }
}

void TextListContent::read(StreamReader & reader, ReadSession & session)
{
    for (std::size_t left = reader.count(4); left != 0; --left) {
        reader.beginRecord();
        reader.string(session.m_TextList.emplace_back());
    }
}

void FacesToSplitContent::read(StreamReader & reader, ReadSession & session)
{
    for (std::size_t left = reader.count(4); left != 0; --left) {
        reader.beginRecord();
        reader.i32(session.m_FacesToSplit.emplace_back());
    }
}

void LogContent::read(StreamReader & reader, ReadSession & session)
{
    constexpr std::size_t SmallestRecord = 9;
    std::array<std::size_t, Lists.size()> counts{};
    for (std::size_t & count : counts)
        count = reader.count(SmallestRecord);
    for (std::size_t list = 0; list < Lists.size(); ++list) {
        for (std::size_t left = counts[list]; left != 0; --left) {
            reader.beginRecord();
            ReadSession::LogEntry entry{};
            entry.type = Lists[list];
            reader.string(entry.text);
            int subType = 0;
            reader.i32(subType);
            entry.subType = static_cast<cad::ILoggerPolicy::SubType>(subType);
            reader.u8(entry.show);
            session.m_LogEntries.push_back(std::move(entry));
        }
    }
}

} // namespace transl_tk
