#ifndef KELD_COMMON_FILE_MAPPING_H
#define KELD_COMMON_FILE_MAPPING_H

/* Named blocks of shared memory under the five calls of file mapping, on POSIX shared memory.
 *
 * A name given on the creating side is found on the opening side by any process of the same user.
 * Characters that a shared-memory name cannot hold are escaped, so that any text serves. The object
 * lives as long as any process holds a handle or a view; its name goes with the last holder, also
 * when that process simply exits. A name whose holders were all killed is free again, and its
 * memory is given back by the next creation of any name. The calls may be made from any thread. */

#include <keld-common/export.h>

#ifdef __cplusplus
extern "C" {
#endif

enum {
    KELD_ERROR_SUCCESS = 0,
    KELD_ERROR_FILE_NOT_FOUND = 2,
    KELD_ERROR_ACCESS_DENIED = 5,
    KELD_ERROR_INVALID_HANDLE = 6,
    KELD_ERROR_NOT_ENOUGH_MEMORY = 8,
    KELD_ERROR_INVALID_PARAMETER = 87,
    KELD_ERROR_DISK_FULL = 112,
    KELD_ERROR_ALREADY_EXISTS = 183,
    KELD_PAGE_READWRITE = 4,
    KELD_FILE_MAP_ALL_ACCESS = 0xF001F
};

/* What `file` of CreateFileMappingA must be: no file, the memory itself. */
#ifdef __cplusplus
#define KELD_INVALID_HANDLE_VALUE (reinterpret_cast<void *>(-1LL))
#else
#define KELD_INVALID_HANDLE_VALUE ((void *)-1LL)
#endif

/* Creates the block `name` of sizeHigh * 2^32 + sizeLow bytes, readable and writable by its owner
 * only, with all its memory reserved and zeroed. Returns its handle. When a living process holds
 * the name, returns a handle of the existing block and GetLastError gives
 * KELD_ERROR_ALREADY_EXISTS. Returns null on failure, KELD_ERROR_DISK_FULL when the memory could
 * not be reserved; a size of 0 is a failure. `file` is KELD_INVALID_HANDLE_VALUE, `attributes`
 * null, `protection` KELD_PAGE_READWRITE. */
KELD_COMMON_EXPORT void * CreateFileMappingA(void * file, void * attributes,
                                             unsigned int protection, unsigned int sizeHigh,
                                             unsigned int sizeLow, char const * name);

/* A handle of the existing block `name`, or null. `access` is KELD_FILE_MAP_ALL_ACCESS, `inherit`
 * 0. */
KELD_COMMON_EXPORT void * OpenFileMappingA(unsigned int access, int inherit, char const * name);

/* Maps `size` bytes of the block from its first byte, or the whole block when `size` is 0. Returns
 * the address, or null on failure, also when the block is smaller than `size`. Both offsets are 0.
 */
KELD_COMMON_EXPORT void * MapViewOfFile(void * handle, unsigned int access, unsigned int offsetHigh,
                                        unsigned int offsetLow, unsigned long long size);

/* Releases the view at `address`. Returns not 0; 0 when there is no such view. */
KELD_COMMON_EXPORT int UnmapViewOfFile(void const * address);

/* Releases `handle`; handles are never used again. Returns not 0; 0 when it is no open handle. */
KELD_COMMON_EXPORT int CloseHandle(void * handle);

/* Why the last of these calls failed on this thread, KELD_ERROR_SUCCESS when it did not. */
KELD_COMMON_EXPORT unsigned int GetLastError(void);

/* The size in bytes of the block of `handle`, -1 when it is no open handle. */
KELD_COMMON_EXPORT long long FileMappingSize(void * handle);

/* Bytes that a new block could hold at this moment. */
KELD_COMMON_EXPORT long long FileMappingFree(void);

/* Maps `size` bytes of a view at `address` ahead of their first use, which costs less than a fault
 * at each page: for stores when `forWriting` is not 0, else for loads. A hint: where the system
 * cannot do it, nothing happens. */
KELD_COMMON_EXPORT void PrepareViewOfFile(void const * address, unsigned long long size,
                                          int forWriting);

/* Lets go of every handle of this process, so that no name outlives it; views stay valid. For a
 * process that is about to end without unwinding. */
KELD_COMMON_EXPORT void ReleaseFileMappings(void);

#ifdef __cplusplus
}
#endif

#endif
