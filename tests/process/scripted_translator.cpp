// A translator that does what a script tells it, for tests of hosts.
//
// The script is the first argument, or else the environment variable KELD_TEST_SCRIPT. Its
// statements are separated by semicolons or line feeds and run in order; the end of the script is
// an orderly end with exit code 0. A statement that fails says so on standard error and ends the
// process with exit code 90, so that no test passes by accident.
//
//   read                  take the next command; a failure when there is none
//   expect TEXT           the command that was taken is TEXT
//   expect-start TEXT     the command that was taken begins with TEXT
//   expect-end            there is no further command
//   record FILE           append the command that was taken, and a line feed, to FILE
//   options               read and remove the options file
//   expect-option N=TEXT  an option N was read, and its text or number is TEXT
//   trail cut SIZE        write "A"s where the host looks for phase and entity, and cut that to
//                         SIZE bytes
//   trail fill SIZE       write SIZE "A"s there
//   frame KEY [TYPE V]... send one frame: a key in decimal, values of type i32, i64 or f64; the
//                         word "size" stands for the size of the model of "model"
//   bytes HEX             send bytes as they are
//   drain                 wait until the host has taken all that was sent
//   model COUNT           make a model of COUNT points (i, 2i, 3i), with ids from 1 on, and write
//   it
//                         into the segment that the last "i" command named
//   attribute TYPE WORDS  put an attribute of that type into the next model; its values are
//                         "i NUMBER" or "t TEXT", and "-" stands for an empty text
//   create-segment SIZE   create the segment that the last "i" command named, filled with zeros
//   print TEXT            print a line on standard output
//   complain TEXT         print a line on standard error
//   touch FILE            make an empty FILE
//   wait-for FILE         wait until FILE is there
//   sleep MILLISECONDS
//   close commands        close a pipe end
//   close frames
//   wait-hangup           wait until the host closes its end of the command pipe
//   ignore NUMBER         ignore a signal
//   forever               do nothing more
//   flood                 send progress frames and do nothing more
//   stop                  be stopped, as by a user's Ctrl-Z
//   die NUMBER            die of a signal
//   exit CODE             end at once
#include <keld-common/channel.h>
#include <keld-common/file_mapping.h>
#include <keld-transl/attributes/attribute.h>
#include <keld-transl/model/point3d.h>
#include <keld-transl/model/pool.h>
#include <keld-transl/process/exec_io.h>
#include <keld-transl/process/server.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <iostream>
#include <map>
#include <poll.h>
#include <sstream>
#include <string>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;

constexpr int FailureCode = 90;
constexpr std::size_t CommandSize = 4096;

[[noreturn]] void fail(std::string const & words)
{
    std::cerr << "scripted translator: " << words << std::endl;
    _exit(FailureCode);
}

class Script
{
public:
    explicit Script(TranslatorEnds const & ends) : m_Ends(ends) {}

    void run(std::string const & text)
    {
        std::string line;
        for (char const c : text + '\n') {
            if (c != ';' && c != '\n') {
                line += c;
                continue;
            }
            runStatement(line);
            line.clear();
        }
    }

private:
    using Operation = void (Script::*)(std::string const & argument);

    void runStatement(std::string const & line)
    {
        static std::map<std::string, Operation> const operations = {
            {"read", &Script::read},
            {"expect", &Script::expect},
            {"expect-start", &Script::expectStart},
            {"expect-end", &Script::expectEnd},
            {"record", &Script::record},
            {"options", &Script::readOptions},
            {"expect-option", &Script::expectOption},
            {"trail", &Script::writeTrail},
            {"frame", &Script::sendFrame},
            {"bytes", &Script::sendBytes},
            {"drain", &Script::drain},
            {"attribute", &Script::addAttribute},
            {"model", &Script::writeModel},
            {"create-segment", &Script::createSegment},
            {"print", &Script::print},
            {"complain", &Script::complain},
            {"touch", &Script::touch},
            {"wait-for", &Script::waitFor},
            {"sleep", &Script::sleep},
            {"close", &Script::closeEnd},
            {"wait-hangup", &Script::waitHangUp},
            {"ignore", &Script::ignore},
            {"forever", &Script::forever},
            {"flood", &Script::flood},
            {"stop", &Script::stop},
            {"die", &Script::die},
            {"exit", &Script::exit},
        };
        std::size_t const start = line.find_first_not_of(" \t");
        if (start == line.npos)
            return;
        std::size_t const end = std::min(line.find(' ', start), line.size());
        auto const operation = operations.find(line.substr(start, end - start));
        if (operation == operations.end())
            fail("no such statement: " + line);
        m_Statement = line;
        (this->*operation->second)(end < line.size() ? line.substr(end + 1) : "");
    }

    void require(bool condition, std::string const & found = "") const
    {
        if (!condition)
            fail("\"" + m_Statement + "\" failed" + (found.empty() ? "" : "; found: " + found));
    }

    ssize_t readBlock(char * block) const
    {
        ssize_t count = 0;
        do {
            count = ::read(m_Ends.commands, block, CommandSize);
        } while (count < 0 && errno == EINTR);
        return count;
    }

    void read(std::string const &)
    {
        char block[CommandSize];
        ssize_t const count = readBlock(block);
        require(count > 0, "end of input");
        m_Command.assign(block, static_cast<std::size_t>(count));
        m_Command.resize(std::min(m_Command.find('\n'), m_Command.size()));
    }

    void expect(std::string const & text) { require(m_Command == text, m_Command); }

    void expectStart(std::string const & text)
    {
        require(m_Command.compare(0, text.size(), text) == 0, m_Command);
    }

    void expectEnd(std::string const &)
    {
        char block[CommandSize];
        require(readBlock(block) == 0, "a command");
    }

    void record(std::string const & file)
    {
        std::ofstream(file, std::ios::app) << m_Command << '\n';
    }

    void readOptions(std::string const &)
    {
        m_Options = transl_tk::IExecIO::create();
        // Answers false for a file without a single option, too.
        m_Options->read(std::to_string(m_Ends.hostProcess));
    }

    void expectOption(std::string const & nameAndText)
    {
        std::size_t const equals = nameAndText.find('=');
        require(equals != nameAndText.npos);
        std::string const found = option(nameAndText.substr(0, equals));
        require(found == nameAndText.substr(equals + 1), found);
    }

    std::string option(std::string const & name) const
    {
        require(m_Options, "no options");
        for (int i = 0; i < m_Options->size(); ++i) {
            transl_tk::IOption * const option = m_Options->getOption(i);
            if (option->getName() == name)
                return textOf(*option->getValue(0));
        }
        require(false, "no such option");
        return {};
    }

    void writeTrail(std::string const & words)
    {
        std::istringstream stream(words);
        std::string what;
        std::size_t size = 0;
        stream >> what >> size;
        int const file = open(option("BREADCRUMBS_FILE").c_str(), O_WRONLY);
        std::string const bytes(what == "fill" ? size : CommandSize, 'A');
        require(::write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()));
        require(what == "fill" || ftruncate(file, static_cast<off_t>(size)) == 0);
        close(file);
    }

    static std::string textOf(transl_tk::IValue & value)
    {
        std::ostringstream text;
        if (value.getType() == 1) {
            char * word = nullptr;
            value.getValue(word);
            text << word;
        } else if (value.getType() == 2) {
            int number = 0;
            value.getValue(number);
            text << number;
        } else if (value.getType() == 3) {
            bool flag = false;
            value.getValue(flag);
            text << (flag ? "true" : "false");
        } else if (value.getType() == 5) {
            double number = 0;
            value.getValue(number);
            text << number;
        }
        return text.str();
    }

    void sendFrame(std::string const & text)
    {
        std::istringstream words(text);
        int key = 0;
        words >> key;
        std::string payload(1, static_cast<char>(key));
        std::string type;
        std::string value;
        while (words >> type >> value) {
            if (value == "size")
                value = std::to_string(m_ModelSize);
            if (type == "i32")
                append(payload, static_cast<std::int32_t>(std::stol(value)));
            else if (type == "i64")
                append(payload, static_cast<std::int64_t>(std::stoll(value)));
            else if (type == "f64")
                append(payload, std::stod(value));
            else
                require(false, type);
        }
        std::string frame;
        append(frame, static_cast<std::uint16_t>(payload.size()));
        send(frame + payload);
    }

    template <class Value> static void append(std::string & bytes, Value value)
    {
        char raw[sizeof(value)];
        std::memcpy(raw, &value, sizeof(value));
        bytes.append(raw, sizeof(value));
    }

    void sendBytes(std::string const & hex)
    {
        std::string digits;
        for (char const c : hex) {
            if (c != ' ')
                digits += c;
        }
        require(digits.size() % 2 == 0);
        std::string bytes;
        for (std::size_t i = 0; i < digits.size(); i += 2)
            bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
        send(bytes);
    }

    void send(std::string const & bytes)
    {
        for (std::size_t sent = 0; sent < bytes.size();) {
            ssize_t const count = ::write(m_Ends.frames, bytes.data() + sent, bytes.size() - sent);
            require(count > 0 || errno == EINTR, std::strerror(errno));
            sent += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
        }
    }

    void drain(std::string const &)
    {
        int unread = 0;
        while (ioctl(m_Ends.frames, FIONREAD, &unread) == 0 && unread > 0)
            std::this_thread::sleep_for(1ms);
    }

    std::string segment() const
    {
        require(m_Command.compare(0, 2, "i ") == 0, m_Command);
        return m_Command.substr(2);
    }

    void addAttribute(std::string const & words) { m_Attribute = words; }

    void makeAttribute() const
    {
        std::istringstream words(m_Attribute);
        int type = 0;
        if (!(words >> type))
            return;
        auto * const attribute =
            transl_tk::Attribute::create("", static_cast<transl_tk::Attribute::Type>(type));
        std::string kind;
        std::string value;
        while (words >> kind >> value) {
            require(kind == "i" || kind == "t", kind);
            if (kind == "i")
                attribute->addValue(std::stoi(value));
            else
                attribute->addValue(value == "-" ? "" : value.c_str());
        }
    }

    void writeModel(std::string const & count)
    {
        transl_tk::Pool::construct("scripted");
        for (int i = 1; i <= std::stoi(count); ++i)
            transl_tk::Point3D::create(0, i, 2. * i, 3. * i);
        makeAttribute();
        m_ModelSize = transl_tk::Server::writeSharedMem(segment());
        std::string const & failure = transl_tk::Server::exchangeFailure();
        require(failure.empty(), failure);
    }

    void createSegment(std::string const & size)
    {
        auto const bytes = static_cast<unsigned int>(std::stoul(size));
        void * const handle = CreateFileMappingA(KELD_INVALID_HANDLE_VALUE, nullptr,
                                                 KELD_PAGE_READWRITE, 0, bytes, segment().c_str());
        require(handle && GetLastError() == KELD_ERROR_SUCCESS);
        m_ModelSize = bytes;
    }

    void print(std::string const & text) { std::cout << text << std::endl; }
    void complain(std::string const & text) { std::cerr << text << std::endl; }
    void touch(std::string const & file) { std::ofstream{file}; }

    void waitFor(std::string const & file)
    {
        while (access(file.c_str(), F_OK) != 0)
            std::this_thread::sleep_for(1ms);
    }

    void sleep(std::string const & milliseconds)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(std::stol(milliseconds)));
    }

    void closeEnd(std::string const & end)
    {
        require(end == "commands" || end == "frames");
        require(close(end == "frames" ? m_Ends.frames : m_Ends.commands) == 0);
    }

    void waitHangUp(std::string const &)
    {
        pollfd end = {m_Ends.commands, 0, 0};
        while (poll(&end, 1, -1) < 0) {
        }
    }

    void ignore(std::string const & number) { std::signal(std::stoi(number), SIG_IGN); }

    void forever(std::string const &)
    {
        for (;;)
            pause();
    }

    void flood(std::string const &)
    {
        for (;;)
            sendFrame("121 i32 50");
    }

    void stop(std::string const &)
    {
        raise(SIGSTOP);
        require(false, "continued");
    }

    void die(std::string const & number)
    {
        rlimit const noCore = {0, 0};
        setrlimit(RLIMIT_CORE, &noCore);
        std::signal(std::stoi(number), SIG_DFL);
        raise(std::stoi(number));
        require(false, "alive");
    }

    void exit(std::string const & code) { _exit(std::stoi(code)); }

    TranslatorEnds m_Ends;
    std::string m_Statement;
    std::string m_Command;
    std::string m_Attribute; ///< type and values, as the statement has them
    transl_tk::IExecIO * m_Options = nullptr;
    long long m_ModelSize = 0;
};

} // namespace

int main(int argc, char ** argv)
{
    char const * const text = argc > 1 ? argv[1] : std::getenv("KELD_TEST_SCRIPT");
    if (!text)
        fail("there is no script");
    TranslatorEnds ends{};
    if (!TranslatorAttach(&ends))
        fail("no host started this process");
    transl_tk::Server::create(true); // keeps the log from being echoed
    Script(ends).run(text);
    transl_tk::Server::quit_exit(0);
}
