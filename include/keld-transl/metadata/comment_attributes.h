#ifndef KELD_TRANSL_METADATA_COMMENT_ATTRIBUTES_H
#define KELD_TRANSL_METADATA_COMMENT_ATTRIBUTES_H

#include <keld-transl/export.h>

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace transl_tk {

class Attribute;
class Base;

/// The comments of a model by entity: lines of text, made from attributes of type 7.
///
/// A copy shares the lines of the entities that were known when it was made; the last of them frees
/// the lines. Entities are told apart by address and need not live. One thread at a time.
class KELD_TRANSL_EXPORT CommentAttributes
{
public:
    /// Adds a line to each entity of `attribute`, if it is of type 7 and has values: for each value
    /// the attribute's name, a blank and the value, separated by ", ", and a line feed at the end.
    ///
    /// Numbers are decimal, with six digits, a bool is 0 or 1, an `unsigned char` its number; other
    /// types and null values add no text of their own. Null arguments are passed over.
    static void setComment(Attribute * attribute, CommentAttributes * comments);

    /// The lines of `entity`, in the order of the calls of `setComment`; empty when there are none.
    std::string getComment(Base * const entity);

private:
    static bool insertCommentCB(Base * const entity, void * pair);

    std::unordered_map<Base *, std::shared_ptr<std::vector<std::string>>> m_Comments;
};

} // namespace transl_tk

#endif
