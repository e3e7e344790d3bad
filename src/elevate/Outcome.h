#pragma once

namespace quillbay::elevate {

/// What came of one step on the file system.
enum class Status {
    Done,
    Missing,  ///< There is nothing of that name.
    Changed,  ///< There is another file than the one that was meant.
    Mounted,  ///< It is a mount point, or one lies in it.
    Occupied, ///< Something of the destination's name is there already.
    Unsafe,   ///< No path to go by: relative, through a link, with `.` or `..` in it.
    Failed    ///< The system refused; `error` says why.
};

struct Outcome
{
    Status status = Status::Done;
    int error = 0; ///< An `errno`, 0 where the status says it all.

    bool done() const { return status == Status::Done; }
    static Outcome failed(int error) { return {Status::Failed, error}; }
};

} // namespace quillbay::elevate
