#ifndef KELD_COMMON_FILES_H
#define KELD_COMMON_FILES_H

/* Files, the environment, and printing. Texts are UTF-8. */

#include <keld-common/export.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The value of environment variable `name` in a newly allocated text that the caller frees with
 * free(); null when the variable is not set. */
KELD_COMMON_EXPORT char * getenv_utf8(char const * name);

/* Not 0 when environment variable `name` is set, also to an empty text. */
KELD_COMMON_EXPORT int envexists_utf8(char const * name);

/* Tests `path` for everything that `mode` names: 'e' it exists, 'r' readable, 'w' writable, 'x'
 * executable. Returns 0 when all hold, -1 with errno set otherwise. */
KELD_COMMON_EXPORT int iaccess(char const * path, char const * mode);

/* A directory in which this process may create files, with a separator at its end, in a newly
 * allocated text that the caller frees with free(); null when there is none. Tried in this order:
 * the values of TMP, TMPDIR, TEMP and TEMPDIR, then /tmp, then HOME and PWD. */
KELD_COMMON_EXPORT char * get_tmp_dir(void);

/* Removes the file `path`. Returns 0, or -1 with errno set. */
KELD_COMMON_EXPORT int unlink_utf8(char const * path);

/* Turns the path in `path` into the platform's form, in place. On Linux the form is kept. */
KELD_COMMON_EXPORT void towin_path(char * path);

/* The id of the calling process. */
KELD_COMMON_EXPORT int getCurrentProcessId(void);

struct _xmlDoc;

/* Saves an XML document of libxml2 as a new file that only its owner can read and write. `format`
 * not 0 indents. A stale file of that name is replaced; a link of that name is removed, never
 * followed. Returns the number of bytes, or -1 with errno set; then no file is left behind. */
KELD_COMMON_EXPORT int xmlSaveFormatFileEnc_utf8(char const * path, struct _xmlDoc * document,
                                                 char const * encoding, int format);

/* Prints to standard output like printf. Returns the number of bytes, negative on failure. */
#if defined(__GNUC__)
__attribute__((format(printf, 1, 2)))
#endif
KELD_COMMON_EXPORT int
vstudio_printf(char const * format, ...);

/* Not 0 when metadata of models is to be counted and stored; see setDatabaseStorage. */
KELD_COMMON_EXPORT int enableDatabaseStorage(void);

/* Sets what enableDatabaseStorage answers in this process from now on. Before the first call the
 * answer is 0. */
KELD_COMMON_EXPORT void setDatabaseStorage(int enabled);

#ifdef __cplusplus
}
#endif

#endif
