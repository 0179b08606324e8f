// Bytes as a model stream: the reader must take or refuse them, and a refusal must leave the model
// as it was.

#include "exchange/model_exchange.h"
#include "exchange/stream_error.h"

#include <keld-transl/model/point3d.h>
#include <keld-transl/model/pool.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    using namespace transl_tk;
    if (size == 0)
        return 0;
    static int runs = 0;
    Pool::construct("fuzz");
    Pool::getInstance()->inactiveLogger();
    Point3D::create(1, 1, 2, 3);
    SubPool & model = *Pool::getInstance()->currentSubPool();
    SharedMem segment("fuzz " + std::to_string(++runs), static_cast<long long>(size), true);
    segment.map();
    std::memcpy(segment.m_Base, data, size);
    try {
        readModel(segment, model);
    } catch (StreamError const &) {
        if (model.m_Points.m_Entities.size() != 1 || !model.m_TextList.empty())
            std::abort();
    }
    segment.unmap();
    Pool::destruct();
    return 0;
}
