#include "exchange/model_exchange.h"

#include "exchange/section.h"
#include "exchange/stream_error.h"

#include <keld-common/file_mapping.h>

#include <algorithm>
#include <cassert>

namespace transl_tk {

namespace {

std::string quoted(std::string const & name)
{
    return "\"" + name + "\"";
}

std::string creationFailure(SharedMem const & segment)
{
    std::string const what = "Cannot create shared memory " + quoted(segment.m_Name) + ": ";
    if (segment.m_Size >= 1LL << 32)
        return what + "the model takes " + std::to_string(segment.m_Size) +
               " bytes, and a segment holds less than 4 GiB.";
    switch (GetLastError()) {
    case KELD_ERROR_ALREADY_EXISTS:
        return what + "the name is taken by a running process.";
    case KELD_ERROR_DISK_FULL:
        return what + std::to_string(segment.m_Size) + " bytes are needed and " +
               std::to_string(FileMappingFree()) + " are free.";
    case KELD_ERROR_ACCESS_DENIED:
        return what + "this user has no right to.";
    default:
        return what + "the system refused " + std::to_string(segment.m_Size) + " bytes.";
    }
}

std::string openingFailure(SharedMem const & segment)
{
    std::string const what = "Cannot open shared memory " + quoted(segment.m_Name) + ": ";
    switch (GetLastError()) {
    case KELD_ERROR_FILE_NOT_FOUND:
        return what + "there is none of that name.";
    case KELD_ERROR_ACCESS_DENIED:
        return what + "this user has no right to.";
    default:
        return what + "the system refused.";
    }
}

} // namespace

long long streamSize(SubPool & subPool)
{
    std::vector<int> & faces = subPool.m_FacesToSplit;
    std::sort(faces.begin(), faces.end());
    faces.erase(std::unique(faces.begin(), faces.end()), faces.end());

    ModelContent const model(subPool);
    SizeCounter counter;
    for (Section const & section : sections())
        section.count(counter, model);
    return counter.size();
}

void writeModel(SharedMem & segment, SubPool & subPool)
{
    if (segment.m_Base == nullptr)
        throw StreamError(creationFailure(segment));
    ModelContent const model(subPool);
    StreamWriter writer(segment);
    for (Section const & section : sections())
        section.write(writer, model);
    assert(writer.atEnd());
}

void readModel(SharedMem & segment, SubPool & subPool)
{
    if (segment.m_Base == nullptr)
        throw StreamError(openingFailure(segment));
    if (long long const held = FileMappingSize(segment.m_Handle); held < segment.m_Size)
        throw StreamError("The shared memory " + quoted(segment.m_Name) + " holds " +
                          std::to_string(held) + " bytes where " + std::to_string(segment.m_Size) +
                          " were announced.");
    ReadSession session(subPool);
    try {
        StreamReader reader(segment, session);
        for (Section const & section : sections()) {
            reader.beginSection(section.name);
            section.read(reader, session);
        }
        session.commit();
    } catch (...) {
        session.rollBack();
        throw;
    }
}

} // namespace transl_tk
