#ifndef KELD_TRANSL_EXCHANGE_STREAM_ERROR_H
#define KELD_TRANSL_EXCHANGE_STREAM_ERROR_H

#include <stdexcept>

namespace transl_tk {

/// A model stream that is not sound, or a segment that cannot serve. Its text is a sentence for the
/// user. Never leaves the library.
class StreamError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace transl_tk

#endif
