#include "process/options_file.h"
#include "reporting/platform_text.h"

#include <keld-transl/process/exec_io.h>
#include <keld-transl/process/server.h>

#include <ostream>

namespace transl_tk {

namespace {

/// Says `message` in the report and to the user. Returns false, the answer of whoever fails.
bool fail(std::string const & message)
{
    Server::Stream()->post(StreamPolicy::Report) << "|FILE_LOG: " << message << std::endl;
    Server::Stream()->post(StreamPolicy::Error) << message << std::endl;
    return false;
}

/// `name` as it can stand in a message.
std::string printable(std::string name)
{
    for (char & character : name) {
        if (character < ' ' || character > '~')
            character = '?';
    }
    return name;
}

class ProxyExecIO final : public IExecIO
{
public:
    ~ProxyExecIO() override { destroyOptions(); }

    void addOption(IOption * option) override
    {
        if (option != nullptr)
            m_OptionsList.push_back(option);
    }

    std::string optionsFilePath(std::string const & id) override
    {
        PlatformText const directory(get_tmp_dir());
        if (directory == nullptr)
            return {};
        return std::string(directory.get()) + "vorn_transl_tk_options_" + id + ".xml";
    }

    bool read(std::string const & id) override
    {
        std::string const path = optionsFilePath(id);
        if (path.empty())
            return fail("Cannot access any candidate temp directory to write options");
        auto const text = options_file::content(path);
        auto options = text ? options_file::read(*text) : std::nullopt;
        unlink_utf8(path.c_str());
        if (!options)
            return fail("Cannot read option xml file: " + path);
        m_OptionsList.reserve(m_OptionsList.size() + options->size());
        for (auto & option : *options)
            m_OptionsList.push_back(option.release());
        return true;
    }

    bool write() override
    {
        PlatformText const directory(get_tmp_dir());
        std::string const path = optionsFilePath(std::to_string(getCurrentProcessId()));
        if (directory != nullptr && iaccess(directory.get(), "e") != 0)
            return fail("Cannot write option xml file in: " + path);
        if (path.empty())
            return fail("Cannot write option xml file to any candidate directory");
        if (auto const index = options_file::firstUnwritable(m_OptionsList))
            return fail("Cannot write option xml file, XML cannot hold a text of option " +
                        std::to_string(*index + 1) + ": " +
                        printable(m_OptionsList[*index]->getName()));
        if (!save(path))
            return fail("Cannot write option xml file in: " + path);
        return true;
    }

    int size() override { return static_cast<int>(m_OptionsList.size()); }

    IOption * getOption(int const & index) override
    {
        return m_OptionsList[static_cast<std::size_t>(index)];
    }

    void clear() override
    {
        destroyOptions();
        m_OptionsList.clear();
    }

private:
    bool save(std::string const & path) const
    {
        auto const document = options_file::write(m_OptionsList);
        int const bytes = xmlSaveFormatFileEnc_utf8(path.c_str(), document.get(), "UTF-8", 1);
        if (bytes > options_file::maximumSize)
            unlink_utf8(path.c_str());
        return bytes != -1 && bytes <= options_file::maximumSize;
    }

    void destroyOptions()
    {
        for (IOption * option : m_OptionsList)
            IOption::destruct(option);
    }

    std::vector<IOption *> m_OptionsList;
};

} // namespace

IExecIO * IExecIO::create()
{
    return new ProxyExecIO;
}

void IExecIO::destruct(IExecIO * options)
{
    delete options;
}

} // namespace transl_tk
