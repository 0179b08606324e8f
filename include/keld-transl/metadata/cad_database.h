#ifndef KELD_TRANSL_METADATA_CAD_DATABASE_H
#define KELD_TRANSL_METADATA_CAD_DATABASE_H

#include <keld-transl/export.h>

namespace transl_tk {

class DataBasePolicy;

/// What `initCadDatabase` knows about the storage of metadata.
enum useCadDataBase : int {
    CadDataBaseFirstUse = 0, ///< storage is on, and this is the first call
    CadDataBaseInUse = 1,    ///< storage is on, and this is a later call
    CadDataBaseOff = 2,      ///< storage is off
    CadDataBaseUnknown = 3   ///< not asked yet
};

/// Whether the storage of metadata is on: `enableDatabaseStorage` of keld-common, asked afresh.
KELD_TRANSL_EXPORT bool useCadDatabase();

/// Asks `enableDatabaseStorage` at the first call in a process, and only then. Gives
/// `CadDataBaseFirstUse` once and `CadDataBaseInUse` from then on when storage is on, always
/// `CadDataBaseOff` when it is off. For the one thread that controls a run.
KELD_TRANSL_EXPORT useCadDataBase initCadDatabase();

/// Replaces the current model by its metadata: counts it into `policy`, empties it, puts a part
/// named "empty_part" into it and calls `serialize` of `policy`. What is left is what a host gets
/// that asks for metadata alone.
///
/// Nothing happens when the storage of metadata is off, without a current sub-pool, and when
/// `policy` is null. Carriers without geometry are not counted. Numbers beyond an int count as the
/// largest int.
KELD_TRANSL_EXPORT void addDataCadDB(DataBasePolicy * policy);

} // namespace transl_tk

#endif
