#pragma once

#include <utility>

#include <unistd.h>

namespace quillbay::platform {

/// An open file descriptor, or none; closes it at its end. Only for descriptors that were read from: what
/// `close` answers is not looked at.
class FileDescriptor
{
public:
    explicit FileDescriptor(int descriptor = -1)
        : m_descriptor(descriptor)
    {
    }
    FileDescriptor(FileDescriptor &&other) noexcept
        : m_descriptor(std::exchange(other.m_descriptor, -1))
    {
    }
    FileDescriptor &operator=(FileDescriptor &&other) noexcept
    {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    ~FileDescriptor()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }

    int get() const { return m_descriptor; }
    /// Gives the descriptor up to the caller.
    int release() { return std::exchange(m_descriptor, -1); }
    explicit operator bool() const { return m_descriptor >= 0; }

private:
    int m_descriptor;
};

} // namespace quillbay::platform
