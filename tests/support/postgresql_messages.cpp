#include "support/postgresql_messages.h"

#include <QtEndian>

namespace orvo {

namespace {

constexpr std::uint32_t start_up = 196608;

std::uint32_t number_at(std::string_view bytes, std::size_t at)
{
    return qFromBigEndian<quint32>(bytes.data() + at);
}

} // namespace

int postgresql_messages::statements_in(std::string_view bytes)
{
    unread_ += bytes;
    int statements = 0;
    // A message is a letter, the length of what follows with the length itself, and its content; those before
    // the start-up is over come without the letter.
    for (std::size_t letter = started_ ? 1 : 0; unread_.size() >= letter + 4; letter = started_ ? 1 : 0) {
        const std::size_t size = letter + number_at(unread_, letter);
        if (unread_.size() < size)
            break;
        if (!started_)
            started_ = number_at(unread_, 4) == start_up;
        else if (unread_.front() == 'E' || unread_.front() == 'Q')
            ++statements;
        unread_.erase(0, size);
    }
    return statements;
}

} // namespace orvo
