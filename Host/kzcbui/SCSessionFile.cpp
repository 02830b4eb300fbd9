#include "SCSessionFile.h"

#include "CContentDigest.h"
#include "ECCommandError.h"

#include <nlohmann/json.hpp>

#include <limits>

namespace NSKZ::Host {

namespace {

using Json = nlohmann::json;
using OrderedJson = nlohmann::ordered_json;
using NSKZCore::VCDate;

constexpr const char* KEY_FORMAT = "format";
constexpr const char* KEY_TABLE = "table";
constexpr const char* KEY_CODEPAGE = "codePage";
constexpr const char* KEY_RECORDS = "records";
constexpr const char* KEY_FIELDS = "fields";
constexpr const char* KEY_ID = "id";
constexpr const char* KEY_NAME = "name";
constexpr const char* KEY_TYPE = "type";
constexpr const char* KEY_DIGEST = "digest";
constexpr const char* KEY_CALENDAR = "calendar";
constexpr const char* KEY_STARTMONTH = "startMonth";
constexpr const char* KEY_CUTOFFDAY = "cutOffDay";
constexpr const char* KEY_WEEKBEGINS = "weekBegins";
constexpr const char* KEY_LIMITATION = "limitation";
constexpr const char* KEY_CONDITIONS = "conditions";
constexpr const char* KEY_ITEM = "item";
constexpr const char* KEY_BUTTON = "button";
constexpr const char* KEY_TEXT = "text";
constexpr const char* KEY_SELECTION = "selection";
constexpr const char* KEY_BUTTONS = "buttons";
constexpr const char* KEY_NEWBUTTONS = "newButtons";
constexpr const char* KEY_SELECTEDITEMS = "selectedItems";
constexpr const char* KEY_STATE = "state";
constexpr const char* KEY_FILES = "files";
constexpr const char* KEY_SIZE = "size";

constexpr DWORD MAX_DWORD = std::numeric_limits<DWORD>::max();
constexpr DWORD MAX_WEEKBEGINS = VCDate::DAYSOFWEEK_SATURDAY;

OrderedJson WriteStretches(const std::vector<SStretch>& stretches)
{
    OrderedJson list = OrderedJson::array();
    for (const SStretch& stretch : stretches)
        list.push_back(OrderedJson::array({stretch.first, stretch.last}));
    return list;
}

// A value with the place where it stands, for the refusal of one that is not as it should be.
class CPlace
{
public:
    CPlace(const Json& valueOfPlace, std::string pathOfPlace)
        : value(valueOfPlace), path(std::move(pathOfPlace))
    {}

    [[noreturn]] void Refuse(const std::string& expected) const
    {
        throw ECCommandError(path.empty() ? expected + " is expected."
                                          : expected + " is expected at " + path + ".");
    }

    CPlace At(const char* key) const
    {
        const auto found = value.is_object() ? value.find(key) : value.end();
        const std::string pathOfKey = path.empty() ? key : path + "." + key;
        if (!value.is_object() || found == value.end())
            throw ECCommandError("\"" + pathOfKey + "\" is missing.");
        return {*found, pathOfKey};
    }
    bool IsNull() const { return value.is_null(); }

    std::uint64_t GetNumber(std::uint64_t first, std::uint64_t last) const
    {
        if (!value.is_number_unsigned() || value.get<std::uint64_t>() < first ||
            value.get<std::uint64_t>() > last)
            Refuse("A number from " + std::to_string(first) + " to " + std::to_string(last));
        return value.get<std::uint64_t>();
    }
    DWORD GetDWORD(DWORD first = 0, DWORD last = MAX_DWORD) const
    {
        return static_cast<DWORD>(GetNumber(first, last));
    }
    std::string GetText() const
    {
        if (!value.is_string() || value.get_ref<const std::string&>().find('\0') != std::string::npos)
            Refuse("A text");
        return value.get<std::string>();
    }
    std::string GetDigest() const
    {
        const std::string text = GetText();
        if (!CContentDigest::IsText(text))
            Refuse("A text of 16 hexadecimal digits");
        return text;
    }
    // Calls read(place) for each entry, and gives what it returns.
    template <class TRead>
    auto GetList(const TRead& read) const
    {
        if (!value.is_array())
            Refuse("A list");
        std::vector<decltype(read(*this))> list;
        list.reserve(value.size());
        for (std::size_t i = 0; i < value.size(); ++i)
            list.push_back(read(CPlace(value[i], path + "[" + std::to_string(i) + "]")));
        return list;
    }
    std::vector<DWORD> GetIDs() const
    {
        return GetList([](const CPlace& id) { return id.GetDWORD(1); });
    }
    SStretch GetStretch(DWORD lowest) const
    {
        const std::vector<DWORD> ends = GetList([=](const CPlace& end) { return end.GetDWORD(lowest); });
        if (ends.size() != 2 || ends[0] > ends[1])
            Refuse("A list of two numbers of which the first is not greater");
        return {ends[0], ends[1]};
    }

private:
    const Json& value;
    std::string path;
};

std::optional<std::vector<SStretch>> ReadLimitation(const CPlace& place)
{
    if (place.IsNull())
        return std::nullopt;
    std::vector<SStretch> stretches =
        place.GetList([](const CPlace& stretch) { return stretch.GetStretch(0); });
    for (std::size_t i = 1; i < stretches.size(); ++i) {
        if (stretches[i].first <= stretches[i - 1].last)
            place.Refuse("A list whose numbers ascend");
    }
    if (stretches.empty())
        place.Refuse("A list that is not empty");
    return stretches;
}

SSavedSession::SPress ReadPress(const CPlace& place)
{
    SSavedSession::SPress press;
    press.itemID = place.At(KEY_ITEM).GetDWORD(1);
    press.btnIDs = place.At(KEY_BUTTONS).GetList([](const CPlace& stretch) { return stretch.GetStretch(1); });
    if (!place.At(KEY_RECORDS).IsNull())
        press.recs = place.At(KEY_RECORDS).GetDWORD();
    return press;
}

} // namespace

std::string SCSessionFile::Write(const SSavedSession& session)
{
    OrderedJson fields = OrderedJson::array();
    for (const SSavedSession::SField& field : session.fields)
        fields.push_back({{KEY_ID, field.fldID},
                          {KEY_NAME, field.name},
                          {KEY_TYPE, field.type},
                          {KEY_DIGEST, field.digest}});
    OrderedJson cnds = OrderedJson::array();
    for (const SSavedSession::SCnd& cnd : session.cnds)
        cnds.push_back({{KEY_ITEM, cnd.itemID}, {KEY_BUTTON, cnd.btnID}, {KEY_TEXT, cnd.text}});
    OrderedJson selection = OrderedJson::array();
    for (const SSavedSession::SPress& press : session.selection) {
        selection.push_back({{KEY_ITEM, press.itemID},
                             {KEY_BUTTONS, WriteStretches(press.btnIDs)},
                             {KEY_RECORDS, press.recs ? OrderedJson(*press.recs) : OrderedJson()}});
    }
    OrderedJson files = OrderedJson::array();
    for (const SSavedFile& file : session.files)
        files.push_back({{KEY_NAME, file.name}, {KEY_SIZE, file.size}, {KEY_DIGEST, file.digest}});

    OrderedJson whole;
    whole[KEY_FORMAT] = FORMAT_VERSION;
    whole[KEY_TABLE] = {
        {KEY_CODEPAGE, session.codePage}, {KEY_RECORDS, session.recCount}, {KEY_FIELDS, fields}};
    whole[KEY_CALENDAR] = {
        {KEY_STARTMONTH, session.calendar.startMonth},
        {KEY_CUTOFFDAY, session.calendar.cutOffDay},
        {KEY_WEEKBEGINS, static_cast<DWORD>(session.calendar.firstDayOfWeek)},
    };
    whole[KEY_LIMITATION] = session.limitation ? WriteStretches(*session.limitation) : OrderedJson();
    whole[KEY_CONDITIONS] = std::move(cnds);
    whole[KEY_SELECTION] = std::move(selection);
    whole[KEY_NEWBUTTONS] = session.itemsWithNewBtns;
    whole[KEY_SELECTEDITEMS] = session.selectedItems;
    whole[KEY_STATE] = session.digestOfState;
    whole[KEY_FILES] = std::move(files);
    return whole.dump() + "\n";
}

SSavedSession SCSessionFile::Read(std::string_view text)
{
    const Json whole = Json::parse(text, nullptr, false);
    if (whole.is_discarded())
        throw ECCommandError("It is no JSON.");
    const CPlace root(whole, "");
    const DWORD version = root.At(KEY_FORMAT).GetDWORD(1);
    if (version > FORMAT_VERSION) {
        throw ECCommandError("It is of format " + std::to_string(version) +
                             "; this program knows those up to " + std::to_string(FORMAT_VERSION) + ".");
    }
    SSavedSession session;
    const CPlace table = root.At(KEY_TABLE);
    session.codePage = static_cast<int>(table.At(KEY_CODEPAGE).GetDWORD(1, 65535));
    session.recCount = table.At(KEY_RECORDS).GetDWORD();
    DWORD fldCount = 0;
    session.fields = table.At(KEY_FIELDS).GetList([&](const CPlace& field) {
        ++fldCount;
        return SSavedSession::SField{
            field.At(KEY_NAME).GetText(), field.At(KEY_TYPE).GetText(), field.At(KEY_DIGEST).GetDigest(),
            version == FORMAT_WITHOUT_FLDIDS ? fldCount : field.At(KEY_ID).GetDWORD(1)};
    });
    const CPlace calendar = root.At(KEY_CALENDAR);
    session.calendar.startMonth = calendar.At(KEY_STARTMONTH).GetDWORD(1, VCDate::MONTHCNT_OF_YEAR);
    session.calendar.cutOffDay = calendar.At(KEY_CUTOFFDAY).GetDWORD(1, VCDate::MAXDAY_OF_MONTH);
    session.calendar.firstDayOfWeek =
        static_cast<VCDate::EDaysOfTheWeek>(calendar.At(KEY_WEEKBEGINS).GetDWORD(0, MAX_WEEKBEGINS));
    session.limitation = ReadLimitation(root.At(KEY_LIMITATION));
    session.cnds = root.At(KEY_CONDITIONS).GetList([](const CPlace& cnd) {
        return SSavedSession::SCnd{cnd.At(KEY_ITEM).GetDWORD(1), cnd.At(KEY_BUTTON).GetDWORD(1),
                                   cnd.At(KEY_TEXT).GetText()};
    });
    session.selection = root.At(KEY_SELECTION).GetList(ReadPress);
    session.itemsWithNewBtns = root.At(KEY_NEWBUTTONS).GetIDs();
    session.selectedItems = root.At(KEY_SELECTEDITEMS).GetIDs();
    session.digestOfState = root.At(KEY_STATE).GetDigest();
    session.files = root.At(KEY_FILES).GetList([](const CPlace& file) {
        return SSavedFile{file.At(KEY_NAME).GetText(),
                          file.At(KEY_SIZE).GetNumber(0, std::numeric_limits<std::uint64_t>::max()),
                          file.At(KEY_DIGEST).GetDigest()};
    });
    return session;
}

} // namespace NSKZ::Host
