#include "library/AppFolderReader.h"

#include "foundation/Uuid.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace quillbay {

namespace {

constexpr int deepest = 64;
constexpr double largestExactInteger = 9007199254740992.0;
constexpr const char *names[] = {"id",    "name",           "appURLs",   "isPinned", "icon",
                                 "color", "parentFolderID", "createdAt", "sortOrder"};

} // namespace

Decoded<QList<AppFolder>> AppFolderReader::read(const QByteArray &text)
{
    AppFolderReader reader;
    if (!json::Json::sax_parse(text.cbegin(), text.cend(), &reader))
        return DecodeError{DecodeError::Kind::NotJson, QStringLiteral("The given data was not valid JSON.")};
    if (reader.m_error)
        return *std::move(reader.m_error);
    return std::move(reader.m_folders);
}

AppFolderReader::Field AppFolderReader::field() const
{
    const bool isMember = m_depth == 3 && m_field == AppURLs;
    return m_depth == 2 || isMember ? m_field : FieldCount;
}

void AppFolderReader::settle(State state)
{
    if (m_depth < 2)
        fail(DecodeError::Kind::TypeMismatch,
             m_depth == 0 ? QStringLiteral("Expected an array.") : QStringLiteral("Expected an object."));
    else if (field() == AppURLs && m_depth == 3)
        m_states[AppURLs] = std::min(m_states[AppURLs], state); // one bad member spoils them all
    else if (field() != FieldCount)
        m_states[m_field] = state;
}

void AppFolderReader::fail(DecodeError::Kind kind, const QString &description)
{
    if (!m_error)
        m_error = DecodeError{kind, description};
}

bool AppFolderReader::null()
{
    settle(m_depth == 3 ? State::WrongType : State::Null);
    return true;
}

bool AppFolderReader::boolean(bool value)
{
    const bool fits = field() == IsPinned;
    if (fits)
        m_folder.isPinned = value;
    settle(fits ? State::Good : State::WrongType);
    return true;
}

void AppFolderReader::number(double value, std::optional<std::int64_t> integer)
{
    const Field at = field();
    const bool fits = at == CreatedAt || (at == SortOrder && integer);
    if (at == CreatedAt)
        m_folder.createdAt = value;
    else if (fits)
        m_folder.sortOrder = *integer;
    settle(fits ? State::Good : State::WrongType);
}

bool AppFolderReader::number_integer(std::int64_t value)
{
    number(double(value), value);
    return true;
}

bool AppFolderReader::number_unsigned(std::uint64_t value)
{
    const bool fits = value <= std::uint64_t(std::numeric_limits<std::int64_t>::max());
    number(double(value), fits ? std::optional(std::int64_t(value)) : std::nullopt);
    return true;
}

bool AppFolderReader::number_float(double value, const std::string &)
{
    // A fraction of zero is an integer written long.
    const bool isInteger = std::abs(value) < largestExactInteger && value == std::trunc(value);
    number(value, isInteger ? std::optional(std::int64_t(value)) : std::nullopt);
    return true;
}

void AppFolderReader::uuid(Field field, QStringView text)
{
    const std::optional<QUuid> id = uuidFromString(text);
    if (id && field == Id)
        m_folder.id = *id;
    else if (id)
        m_folder.parentFolderID = id;
    settle(id ? State::Good : State::NoUuid);
}

bool AppFolderReader::string(std::string &value)
{
    const Field at = field();
    if (at == FieldCount || (at == AppURLs && m_depth == 2)) {
        settle(State::WrongType);
        return true;
    }
    QString text = QString::fromUtf8(value.data(), qsizetype(value.size()));
    switch (at) {
    case Id:
    case ParentFolderID:
        uuid(at, text);
        return true;
    case Name:
        m_folder.name = std::move(text);
        break;
    case AppURLs:
        m_folder.appURLs.append(std::move(text));
        break;
    case Icon:
        m_folder.icon = std::move(text);
        break;
    case Color:
        m_folder.color = std::move(text);
        break;
    default:
        settle(State::WrongType);
        return true;
    }
    settle(State::Good);
    return true;
}

bool AppFolderReader::binary(json::Json::binary_t &)
{
    return false; // JSON text has none
}

bool AppFolderReader::start_object(std::size_t)
{
    if (m_depth != 1)
        settle(State::WrongType);
    m_field = m_depth == 1 ? FieldCount : m_field;
    return ++m_depth <= deepest;
}

bool AppFolderReader::key(std::string &name)
{
    if (m_depth == 2)
        m_field = Field(std::find(std::begin(names), std::end(names), name) - std::begin(names));
    return true;
}

bool AppFolderReader::end_object()
{
    if (--m_depth == 1)
        finishFolder();
    return true;
}

bool AppFolderReader::start_array(std::size_t)
{
    if (m_depth == 2 && m_field == AppURLs) {
        m_folder.appURLs.clear();
        settle(State::Good);
    } else if (m_depth > 0) {
        settle(State::WrongType);
    }
    return ++m_depth <= deepest;
}

bool AppFolderReader::end_array()
{
    --m_depth;
    return true;
}

bool AppFolderReader::parse_error(std::size_t, const std::string &, const std::exception &)
{
    return false;
}

void AppFolderReader::finishFolder()
{
    using Kind = DecodeError::Kind;
    for (int field = 0; field < FieldCount; ++field) {
        const State state = m_states[size_t(field)];
        const QString name = QLatin1String(names[field]);
        const bool isOptional = field == ParentFolderID || field == SortOrder;
        if (state == State::Good || (isOptional && (state == State::Missing || state == State::Null)))
            continue;
        if (state == State::Missing)
            fail(Kind::KeyNotFound, QStringLiteral("No value for \"%1\".").arg(name));
        else if (state == State::NoUuid)
            fail(Kind::DataCorrupted, QStringLiteral("The value of \"%1\" is no UUID.").arg(name));
        else
            fail(Kind::TypeMismatch, QStringLiteral("The value of \"%1\" has another type.").arg(name));
    }
    // Another value under the same key may have stood before the one that counts.
    if (m_states[ParentFolderID] != State::Good)
        m_folder.parentFolderID.reset();
    if (m_states[SortOrder] != State::Good)
        m_folder.sortOrder = 0;
    m_folders.append(std::exchange(m_folder, {}));
    m_states = {};
    m_field = FieldCount;
}

} // namespace quillbay
