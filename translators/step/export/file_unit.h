#ifndef KELD_STEP_EXPORT_FILE_UNIT_H
#define KELD_STEP_EXPORT_FILE_UNIT_H

namespace translator_kit {
class Run;
}

namespace step {

/// The unit of a file that is to be written.
struct FileUnit
{
    char const * word; ///< the kernel's
    double millimetres;
};

/// The unit of what stands on top of the model. Millimetres, and words in the log, for one that
/// cannot be written.
FileUnit fileUnitOf(translator_kit::Run & run);

} // namespace step

#endif
