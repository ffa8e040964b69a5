#pragma once

#include <ostream>
#include <streambuf>

namespace histories {

/// Takes everything and keeps nothing.
class NullStream : public std::ostream {
public:
    NullStream() : std::ostream(nullptr) { rdbuf(&buffer_); }

private:
    class Buffer : public std::streambuf {
    protected:
        int_type overflow(int_type letter) override { return traits_type::not_eof(letter); }

        std::streamsize xsputn(const char* /*text*/, std::streamsize length) override { return length; }
    };

    Buffer buffer_;
};

} // namespace histories
