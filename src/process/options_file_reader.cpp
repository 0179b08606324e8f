#include "process/options_file.h"
#include "process/xml_text.h"

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <cstdlib>
#include <fcntl.h>
#include <libxml/parser.h>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>

namespace transl_tk::options_file {

namespace {

int integerIn(std::string const & text)
{
    long const number = std::strtol(text.c_str(), nullptr, 10);
    return static_cast<int>(
        std::clamp<long>(number, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

// A decimal point is a point, whatever locale the process has set.
double numberIn(std::string const & text)
{
    static locale_t const classic = newlocale(LC_ALL_MASK, "C", locale_t{});
    return strtod_l(text.c_str(), nullptr, classic);
}

/// Goes through the elements below the root, whose number and content are not to be trusted.
class Cursor
{
public:
    explicit Cursor(xmlNode * first) : m_Node(first) { skipToElement(); }

    bool isAtElement() const { return m_Node != nullptr; }

    /// The content of the element, or `otherwise` at the end. Goes on to the next one.
    std::string take(std::string otherwise)
    {
        if (m_Node == nullptr)
            return otherwise;
        std::unique_ptr<xmlChar, void (*)(void *)> const content(xmlNodeGetContent(m_Node),
                                                                 xmlFree);
        skip();
        if (content == nullptr)
            return {};
        return reinterpret_cast<char const *>(content.get());
    }

    int takeInteger(int otherwise) { return m_Node == nullptr ? otherwise : integerIn(take({})); }

    void skip()
    {
        if (m_Node != nullptr)
            m_Node = m_Node->next;
        skipToElement();
    }

private:
    void skipToElement()
    {
        while (m_Node != nullptr && m_Node->type != XML_ELEMENT_NODE)
            m_Node = m_Node->next;
    }

    xmlNode * m_Node;
};

/// Null when the type is none of a value; the cursor then stands behind the type.
IValue * readValue(Cursor & cursor)
{
    switch (cursor.takeInteger(-1)) {
    case 1:
        return IValue::create(cursor.take({}).c_str());
    case 2:
        return IValue::create(cursor.takeInteger(0));
    case 3:
        return IValue::create(cursor.take({}) == "TRUE");
    case 4:
        cursor.skip();
        return IValue::create(0.0F);
    case 5:
        return IValue::create(numberIn(cursor.take("0")));
    case 6:
        cursor.skip();
        return IValue::create(static_cast<unsigned char>(0));
    default:
        return nullptr;
    }
}

Options::value_type readOption(Cursor & cursor)
{
    std::string const name = cursor.take({});
    std::string const description = cursor.take({});
    Options::value_type option(IOption::create(name.c_str(), description.c_str()));
    int const count = cursor.takeInteger(0);
    // Past the last element nothing more comes, whatever the count says.
    for (int i = 0; i < count && cursor.isAtElement(); ++i) {
        if (IValue * const value = readValue(cursor))
            option->addValue(value);
    }
    return option;
}

/// A file descriptor that is closed with its holder.
class Descriptor
{
public:
    explicit Descriptor(int number) : m_Number(number) {}
    Descriptor(Descriptor const &) = delete;
    Descriptor & operator=(Descriptor const &) = delete;
    ~Descriptor()
    {
        if (m_Number >= 0)
            ::close(m_Number);
    }
    int number() const { return m_Number; }

private:
    int m_Number;
};

} // namespace

std::optional<Options> read(std::string_view text)
{
    // Parsed from memory, not from the path, so that the file is opened by our rules. Entities are
    // not replaced, nothing is fetched, limits stay on, nothing is printed, and the encoding is the
    // one that the writer uses, whatever the text declares.
    Document const document(
        xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, "UTF-8",
                      XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
    // Without a document type there are no entities that a small text could blow up with.
    if (document == nullptr || document->intSubset != nullptr)
        return std::nullopt;
    xmlNode const * const root = xmlDocGetRootElement(document.get());
    if (root == nullptr)
        return std::nullopt;
    Options options;
    if (xmlStrcmp(root->name, xml::bytes(rootName)) != 0)
        return options;
    if (root->children == nullptr)
        return std::nullopt;
    for (Cursor cursor(root->children); cursor.isAtElement();)
        options.push_back(readOption(cursor));
    return options;
}

std::optional<std::string> content(std::string const & path)
{
    // Without O_NONBLOCK a pipe of that name would hold the process up.
    Descriptor const file(::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat status;
    if (file.number() < 0 || ::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode) ||
        status.st_size > maximumSize)
        return std::nullopt;
    std::string text(static_cast<std::size_t>(status.st_size), '\0');
    std::size_t length = 0;
    while (length < text.size()) {
        ssize_t const count = ::read(file.number(), text.data() + length, text.size() - length);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return std::nullopt;
        if (count == 0)
            break;
        length += static_cast<std::size_t>(count);
    }
    text.resize(length);
    return text;
}

} // namespace transl_tk::options_file
