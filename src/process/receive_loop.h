#ifndef KELD_TRANSL_PROCESS_RECEIVE_LOOP_H
#define KELD_TRANSL_PROCESS_RECEIVE_LOOP_H

#include <keld-common/channel.h>

namespace transl_tk {

/// Receives frames on the channel of `control` until the end mark or the end of input, and calls
/// `callback` for each.
void receiveFrames(ServerControl & control,
                   bool (*callback)(char *, int &, bool const &, int &, void *), void * context);

} // namespace transl_tk

#endif
