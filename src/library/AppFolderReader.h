#pragma once

#include "foundation/Decoding.h"
#include "foundation/JsonFields.h"
#include "library/AppFolder.h"

#include <array>
#include <optional>
#include <string>

namespace quillbay {

/// Makes folders of the parser's events, without the tree in between: a list can have a megabyte, and it is
/// read while the user waits for another workspace. For implementation files only, as `JsonFields.h` is.
///
/// The first wrong record is the error; text that is no JSON counts before it. Of a key that is there twice
/// the last value counts, as it does in a tree.
class AppFolderReader
{
public:
    static Decoded<QList<AppFolder>> read(const QByteArray &json);

    // What the parser calls. Each answers whether to go on.
    bool null();
    bool boolean(bool value);
    bool number_integer(std::int64_t value);
    bool number_unsigned(std::uint64_t value);
    bool number_float(double value, const std::string &text);
    bool string(std::string &value);
    bool binary(json::Json::binary_t &value);
    bool start_object(std::size_t size);
    bool key(std::string &name);
    bool end_object();
    bool start_array(std::size_t size);
    bool end_array();
    bool parse_error(std::size_t position, const std::string &token, const std::exception &error);

private:
    enum Field { Id, Name, AppURLs, IsPinned, Icon, Color, ParentFolderID, CreatedAt, SortOrder, FieldCount };
    enum class State { Missing, Null, WrongType, NoUuid, Good };

    /// The field to which a value belongs that comes now; `FieldCount` where it belongs to none that counts.
    Field field() const;
    /// Notes what came of the value that is the present field's. Anywhere else it is a value out of place or
    /// of no interest.
    void settle(State state);
    void number(double value, std::optional<std::int64_t> integer);
    void uuid(Field field, QStringView text);
    void fail(DecodeError::Kind kind, const QString &description);
    void finishFolder();

    QList<AppFolder> m_folders;
    AppFolder m_folder;
    std::array<State, FieldCount> m_states = {};
    std::optional<DecodeError> m_error;
    Field m_field = FieldCount;
    int m_depth = 0; ///< Containers open: 1 in the list, 2 in a folder, 3 in its members.
};

} // namespace quillbay
