#pragma once

#include <random>
#include <string>
#include <vector>

namespace quillbay::testing {

/// Makes files as a person would who wants a removal to go wrong. All made from one seed, the same each time.
class HostileTree
{
public:
    /// Links in the trees lead into `outside`, and hard links are made to files in it.
    HostileTree(unsigned seed, std::string outside);

    /// Some files and folders that nothing may happen to.
    void makeOutside();

    /// A name with apostrophes, quotes, `$(…)`, line ends, leading dashes, blanks, bytes that are no UTF-8,
    /// up to 255 bytes; never the same twice.
    std::string name();

    /// Makes something at `path`, which is free: mostly a folder with a few more in it, or a file, a link (to
    /// outside, to itself, to nothing, to "/"), a hard link to a file outside, a pipe.
    void make(const std::string &path, int depth = 3);

    /// Makes folders in `folder` until a path has `length` bytes, with a file in the last; its path.
    std::string makeLongPath(const std::string &folder, std::size_t length);

    int number(int below);

private:
    std::mt19937 m_random;
    std::string m_outside;
    int m_names = 0;
};

void writeFile(const std::string &path, const std::string &content);

} // namespace quillbay::testing
