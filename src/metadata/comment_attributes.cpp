#include "metadata/value_text.h"

#include <keld-transl/attributes/attribute.h>
#include <keld-transl/metadata/comment_attributes.h>

#include <locale>
#include <sstream>
#include <utility>

namespace transl_tk {

namespace {

std::string lineOf(Attribute const & attribute)
{
    std::ostringstream line;
    line.imbue(std::locale::classic());
    int const count = attribute.getNumValues();
    for (int i = 0; i < count; ++i) {
        line << attribute.getName() << ' ';
        writeValue(line, attribute.getValue(i));
        line << (i + 1 < count ? ", " : "\n");
    }
    return std::move(line).str();
}

} // namespace

void CommentAttributes::setComment(Attribute * attribute, CommentAttributes * comments)
{
    if (attribute == nullptr || comments == nullptr || attribute->getType() != Attribute::Comment)
        return;
    std::pair<CommentAttributes *, std::string> pair(comments, lineOf(*attribute));
    if (!pair.second.empty())
        attribute->forEachEntity(insertCommentCB, &pair);
}

std::string CommentAttributes::getComment(Base * const entity)
{
    auto const found = m_Comments.find(entity);
    std::string comment;
    if (found != m_Comments.end())
        for (std::string const & line : *found->second)
            comment += line;
    return comment;
}

bool CommentAttributes::insertCommentCB(Base * const entity, void * pair)
{
    auto const & [comments, line] =
        *static_cast<std::pair<CommentAttributes *, std::string> *>(pair);
    auto & lines = comments->m_Comments[entity];
    if (lines == nullptr)
        lines = std::make_shared<std::vector<std::string>>();
    lines->push_back(line);
    return true;
}

} // namespace transl_tk
