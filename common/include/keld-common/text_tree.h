#ifndef KELD_COMMON_TEXT_TREE_H
#define KELD_COMMON_TEXT_TREE_H

/* Texts in a tree. A key is a path, with "/" between its levels: "CAD/Mass" stands below "CAD". An
 * empty level is a level like any other, so that "a", "/a", "a/" and "" are four keys.
 *
 * A tree belongs to one thread at a time, and its functions are not called from within the
 * functions given to it. Those must not throw; where one does, the call fails as if memory had run
 * out. */

#include <keld-common/export.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct TreeS_P TreeS_P;

/* Makes an empty tree, which the caller frees with FreeTreeS_P. `compare` orders two levels of
 * keys: below 0, 0 or above 0 where the first stands before, is, or stands behind the second.
 * `duplicate` copies a key, and the copy must compare equal; it returns null when there is no
 * memory. `release` frees such copies and the texts that the tree has adopted. Null when a function
 * is null or memory runs out. */
KELD_COMMON_EXPORT TreeS_P * NewTreeS_P(int (*compare)(char const * a, char const * b),
                                        char * (*duplicate)(char const * key),
                                        void (*release)(void * text));

/* Sets the text of `key` and adopts it; a text that the key had before is released. The spelling of
 * the key stays that of the first call. `reserved` is 0. Returns 1; 0 when an argument is null or
 * memory runs out, and then the tree is as it was and the text is still the caller's. */
KELD_COMMON_EXPORT int SetNodeDataS_P(TreeS_P * tree, char const * key, char * text, int reserved);

/* The text of `key`, which stays the tree's and valid until it is set again; null when the key has
 * none, also when keys below it do, when an argument is null or memory runs out. */
KELD_COMMON_EXPORT char const * GetNodeDataS_P(TreeS_P const * tree, char const * key);

/* Calls `visit` for every key that has a text, in the order of the tree: a key before those below
 * it, and these before its next neighbour, each level as `compare` orders it. `key` is valid during
 * the call. Ends at the first `visit` that returns 0. Returns 1 when all were visited; 0 when
 * `visit` ended the walk, when `tree` or `visit` is null or memory runs out. */
KELD_COMMON_EXPORT int WalkTreeS_P(TreeS_P const * tree,
                                   int (*visit)(char const * key, char const * text, void * user),
                                   void * user);

/* Frees the tree with all its texts; null is no fault. */
KELD_COMMON_EXPORT void FreeTreeS_P(TreeS_P * tree);

/* Compares two texts without regard to the case of the letters A to Z, in every locale. Returns a
 * number below 0, 0 or above 0. Null equals null and stands before every text. */
KELD_COMMON_EXPORT int str_case_cmp(char const * a, char const * b);

#ifdef __cplusplus
}
#endif

#endif
