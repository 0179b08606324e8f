#include <keld-transl/process/rwfd.h>

#include <bit>
#include <cerrno>
#include <cstring>
#include <sstream>
#include <unistd.h>

namespace transl_tk {

namespace {

constexpr int readSize = 4096;
constexpr int blockSize = readSize + 1;
constexpr int lengthSize = 2;
constexpr int maximumRecord = blockSize - lengthSize;

template <class Bits> void storeLittleEndian(char * place, Bits bits)
{
    for (std::size_t i = 0; i < sizeof(Bits); ++i)
        place[i] = static_cast<char>(bits >> (8 * i));
}

} // namespace

struct RWFD::Blocks
{
    char record[blockSize] = {};
    char frame[blockSize] = {};

    // Stores `bits` behind the `length` bytes of the record, if it has room for them.
    template <class Bits> void append(int & length, Bits bits)
    {
        constexpr int width = sizeof(Bits);
        if (length > maximumRecord - width)
            return;
        storeLittleEndian(record + length, bits);
        length += width;
    }
};

RWFD::RWFD() : m_Fd(0), m_Length(0) {}

RWFD::RWFD(int const & fd) : m_Fd(fd), m_Length(0), m_Blocks(std::make_shared<Blocks>()) {}

RWFD::RWFD(RWFD const &) = default;

RWFD & RWFD::operator=(RWFD const &) = default;

RWFD::~RWFD() = default;

void RWFD::setKey(int const & key)
{
    m_Blocks->record[0] = static_cast<char>(key);
    m_Length = 1;
}

void RWFD::appendInt(int const & value)
{
    m_Blocks->append(m_Length, std::bit_cast<unsigned int>(value));
}

void RWFD::appendInt64(long long const & value)
{
    m_Blocks->append(m_Length, std::bit_cast<unsigned long long>(value));
}

void RWFD::appendFloat(float const & value)
{
    m_Blocks->append(m_Length, std::bit_cast<unsigned int>(value));
}

void RWFD::appendDouble(double const & value)
{
    m_Blocks->append(m_Length, std::bit_cast<unsigned long long>(value));
}

void RWFD::write_fd()
{
    auto const length = static_cast<std::size_t>(m_Length);
    storeLittleEndian(m_Blocks->frame, static_cast<unsigned short>(length));
    std::memcpy(m_Blocks->frame + lengthSize, m_Blocks->record, length);
    // An interrupted write has written nothing, so that the frame still goes out in one piece.
    while (::write(m_Fd, m_Blocks->frame, length + lengthSize) < 0 && errno == EINTR) {
    }
}

void RWFD::read_fd(std::string & text)
{
    char * const block = m_Blocks->record;
    block[0] = '\0';
    block[readSize] = '\0';
    ssize_t count = 0;
    do
        count = ::read(m_Fd, block, readSize);
    while (count < 0 && errno == EINTR);
    if (count < 1) {
        block[0] = '\0';
        return;
    }
    text = block;
}

std::string RWFD::readLine(char const * text)
{
    std::string line;
    std::istringstream stream(text);
    std::getline(stream, line, '\n');
    return line;
}

} // namespace transl_tk
