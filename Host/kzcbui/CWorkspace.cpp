#include "CWorkspace.h"

#include "CBuildProgress.h"
#include "CCndParser.h"
#include "CCSVLoader.h"
#include "CInterruptScope.h"
#include "ECCommandError.h"
#include "ECHostError.h"
#include "SCHostText.h"
#include "SCNameWord.h"
#include "SCShownText.h"
#include "SCSystemFile.h"
#include "SCTableFile.h"
#include "VECException.h"

#include <algorithm>
#include <new>
#include <unordered_map>

namespace NSKZ::Host {

namespace {

using NSKZCore::CBUIDataMngr;
using NSKZCore::CCSVLoader;
using NSKZCore::SCBUICoreCom;

constexpr std::size_t MAX_ITEMS_IN_MESSAGE = 12;
constexpr std::size_t MAX_BTNS_IN_MESSAGE = 5;

std::string InQuotes(std::string_view text)
{
    std::string quoted = "\"";
    return quoted.append(text).append("\"");
}

[[noreturn]] void RefuseTable(const std::string& path, const std::string& reason)
{
    throw ECHostError(EXITSTATUS_TABLE_UNREADABLE, path + ": " + reason);
}

// The engine's code page for the content of a table: 932 for Shift-JIS, UTF-8 for anything else; of a content
// that is neither the loader tells where it breaks off.
int ChooseCodePage(std::string_view content)
{
    return SCHostText::IsUTF8(content) || !SCHostText::IsShiftJIS(content) ? CP_UTF8 : _KANJI_CP;
}

bool SetCalendarIn(NSKZCore::CSourceDataMngr& table, const CWorkspace::SCalendar& calendar)
{
    const bool isMonthSet = table.SetStartMonth(calendar.startMonth);
    const bool isDaySet = table.SetCutOffDate(calendar.cutOffDay);
    return table.SetDaysOfTheWeek(calendar.firstDayOfWeek) && isMonthSet && isDaySet;
}

} // namespace

CWorkspace::CWorkspace(const CHostOptions& options, std::ostream* progressTerminal)
    : tablePath(options.tablePath), codePage(options.codePage), delimiter(options.delimiter)
{
    CBuildProgress progress(progressTerminal);
    CInterruptScope interruptScope; // ends before what it holds
    try {
        NSKZCore::CSourceDataMngr table = Load(options);
        interruptScope.Hold(progress);
        copies.push_back({NAME_OF_FIRST, std::make_unique<CAnalysis>(std::move(table), options.linkTables,
                                                                     progress, progressTerminal)});
        if (progress.canceled)
            RefuseTable(tablePath, "The building of its items was cancelled.");
        RequireItemsOfTable();
    } catch (const std::bad_alloc&) {
        RefuseTable(tablePath, "There is not enough memory for the table.");
    } catch (const NSKZCore::VECException& error) {
        RefuseTable(tablePath, SCHostText::FromException(error.what()));
    }
}

NSKZCore::CSourceDataMngr CWorkspace::Load(const CHostOptions& options)
{
    const std::string content = SCSystemFile::Read(tablePath);
    _setmbcp(codePage != CHostOptions::CODEPAGE_AUTO ? codePage : ChooseCodePage(content));
    // Here and no sooner: a table is made for the code page in force.
    NSKZCore::CSourceDataMngr table;

    CCSVLoader::SOptions loaderOptions = GetLoaderOptions();
    loaderOptions.hasHeader = options.hasHeader;
    for (const auto& [name, type] : options.types) {
        std::string nameOfEngine;
        if (!SCHostText::IntoEngine(name, nameOfEngine))
            RefuseTable(tablePath,
                        "A type is given for the field " + InQuotes(name) + ", which there is not.");
        loaderOptions.types.emplace_back(nameOfEngine, type);
    }
    try {
        CCSVLoader(std::move(loaderOptions)).LoadMemory(content, "", table);
    } catch (const NSKZCore::ECSVLoadError& error) {
        RefuseTable(tablePath, SCTableFile::Describe(error));
    }
    return table;
}

// The environment keeps to itself why a build ended early.
void CWorkspace::RequireItemsOfTable() const
{
    std::vector<DWORD> fldIDs;
    GetTable().GetSrcFrmDataFldID(fldIDs);
    DWORD itemID = 0;
    for (const DWORD fldID : fldIDs) {
        if (!GetEnv().GetBtnClassID(fldID, itemID))
            RefuseTable(tablePath, "Its field " + std::to_string(fldID) + " cannot be made an item.");
    }
}

NSKZCore::CCSVLoader::SOptions CWorkspace::GetLoaderOptions() const
{
    CCSVLoader::SOptions options;
    options.codePage = codePage == CHostOptions::CODEPAGE_AUTO ? CCSVLoader::CODEPAGE_AUTO : codePage;
    options.delimiter = delimiter;
    return options;
}

std::vector<DWORD> CWorkspace::GetItemIDs() const
{
    std::vector<DWORD> itemIDs;
    GetEnv().GetAllBtnClassIDList(itemIDs, true);
    std::erase_if(itemIDs, [this](DWORD itemID) { return !IsItem(itemID); });
    return itemIDs;
}

bool CWorkspace::IsItem(DWORD itemID) const
{
    DWORD fldID = 0;
    return GetEnv().ExistBtnClass(itemID) &&
           (SCBUICoreCom::IsVirBtnClass(itemID) || GetEnv().GetFldID(itemID, fldID));
}

std::string CWorkspace::GetItemName(DWORD itemID) const
{
    DWORD fldID = 0;
    const char* name = nullptr;
    const bool isKnown = GetEnv().GetFldID(itemID, fldID) ? GetTable().GetItemName(fldID, name)
                                                          : GetEnv().GetNameOfVirBtnClass(itemID, name);
    return isKnown && name != nullptr ? SCHostText::FromEngine(name) : std::string();
}

std::string CWorkspace::GetBtnText(DWORD itemID, DWORD btnID) const
{
    const char* text = nullptr;
    GetEnv().GetAliasOfBtn(itemID, btnID, text);
    return SCHostText::FromEngine(text);
}

DWORD CWorkspace::FindItem(const std::string& word) const
{
    const SCNameWord::SNameWord name = SCNameWord::Read(word, SCNameWord::MARK_OF_ITEM);
    if (name.isID) {
        if (!IsItem(name.id))
            throw ECCommandError("There is no item " + word + "; \"items\" lists them.");
        return name.id;
    }
    std::vector<DWORD> found;
    std::string known;
    std::size_t knownCount = 0;
    for (const DWORD itemID : GetItemIDs()) {
        const std::string itemName = GetItemName(itemID);
        if (itemName == name.text)
            found.push_back(itemID);
        if (++knownCount <= MAX_ITEMS_IN_MESSAGE)
            known += (known.empty() ? "" : ", ") + InQuotes(itemName);
    }
    if (found.empty()) {
        throw ECCommandError("There is no item " + InQuotes(name.text) + "; the items are " + known +
                             (knownCount > MAX_ITEMS_IN_MESSAGE ? " and further ones." : "."));
    }
    if (found.size() > 1) {
        throw ECCommandError(std::to_string(found.size()) + " items have the name " + InQuotes(name.text) +
                             "; name the one you mean by @ and its identifier, as @" +
                             std::to_string(found.front()) + ".");
    }
    return found.front();
}

DWORD CWorkspace::FindFldWithHeld(const std::string& word) const
{
    const NSKZCore::CSourceDataMngr& table = GetAnalysis().GetTableWithHeld();
    const SCNameWord::SNameWord name = SCNameWord::Read(word, SCNameWord::MARK_OF_ITEM);
    std::string nameOfEngine;
    DWORD fldID = 0;
    if (!name.isID && SCHostText::IntoEngine(name.text, nameOfEngine) &&
        table.GetFldIDOfName(nameOfEngine, fldID))
        return fldID;
    const DWORD itemID = FindItem(word);
    if (!GetEnv().GetFldID(itemID, fldID)) {
        throw ECCommandError("The item " + InQuotes(GetItemName(itemID)) +
                             " is virtual: it stands on no field of the table.");
    }
    if (table.GetFldData(fldID) == nullptr) {
        throw ECCommandError("The field of the item " + InQuotes(GetItemName(itemID)) +
                             " is gone with a held change.");
    }
    return fldID;
}

DWORD CWorkspace::FindVirItem(const std::string& word) const
{
    const DWORD itemID = FindItem(word);
    if (!SCBUICoreCom::IsVirBtnClass(itemID)) {
        throw ECCommandError("The item " + InQuotes(GetItemName(itemID)) +
                             " is no virtual item; \"virtual list\" lists these.");
    }
    return itemID;
}

DWORD CWorkspace::GetItemOfMembers(DWORD itemID, DWORD btnID) const
{
    DWORD refItemID = 0;
    if (!GetEnv().GetRefBtnClassIDOfVirIncBtn(itemID, btnID, refItemID))
        return itemID;
    if (!IsItem(refItemID)) {
        throw ECCommandError("The item whose buttons " + InQuotes(GetBtnText(itemID, btnID)) +
                             " grouped is gone.");
    }
    return refItemID;
}

std::vector<DWORD> CWorkspace::FindBtns(DWORD itemID, const std::vector<std::string>& words) const
{
    const std::string itemName = InQuotes(GetItemName(itemID));
    std::vector<DWORD> btnIDs(words.size(), SCBUICoreCom::BTN_ID_UNSETTING);
    std::vector<std::string> textOfWord(words.size());
    std::unordered_map<std::string, std::vector<DWORD>> btnsOfText;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const SCNameWord::SNameWord name = SCNameWord::Read(words[i], SCNameWord::MARK_OF_BTN);
        SCBUICoreCom::EBtnType type;
        if (name.isID) {
            if (!GetEnv().GetTypeOfBtn(itemID, name.id, type))
                throw ECCommandError("The item " + itemName + " has no button " + words[i] + ".");
            btnIDs[i] = name.id;
        } else {
            // A text that the code page lacks is the text of no button.
            if (!SCHostText::IntoEngine(name.text, textOfWord[i])) {
                throw ECCommandError("The item " + itemName + " has no button " + InQuotes(name.text) + ".");
            }
            btnsOfText.try_emplace(textOfWord[i]);
        }
    }
    if (!btnsOfText.empty()) {
        std::vector<DWORD> allBtnIDs;
        GetEnv().GetAllBtnIDListOfBtnClass(itemID, allBtnIDs, true);
        std::string key;
        for (const DWORD btnID : allBtnIDs) {
            const char* text = nullptr;
            GetEnv().GetAliasOfBtn(itemID, btnID, text);
            key = text != nullptr ? text : "";
            const auto wanted = btnsOfText.find(key);
            if (wanted != btnsOfText.end())
                wanted->second.push_back(btnID);
        }
    }
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (btnIDs[i] != SCBUICoreCom::BTN_ID_UNSETTING)
            continue;
        const std::string shown = InQuotes(SCHostText::FromEngine(textOfWord[i].c_str()));
        const std::vector<DWORD>& found = btnsOfText.at(textOfWord[i]);
        if (found.empty())
            throw ECCommandError("The item " + itemName + " has no button " + shown + ".");
        if (found.size() > 1) {
            std::string ids;
            for (std::size_t j = 0; j < found.size() && j < MAX_BTNS_IN_MESSAGE; ++j)
                ids += (j == 0 ? "" : ", ") + SCNameWord::WriteID(found[j], SCNameWord::MARK_OF_BTN);
            throw ECCommandError(std::to_string(found.size()) + " buttons of " + itemName + " show " + shown +
                                 "; name the one you mean by its identifier: " + ids + ".");
        }
        btnIDs[i] = found.front();
    }
    return btnIDs;
}

DWORD CWorkspace::FindSpBtn(DWORD itemID, const std::string& word) const
{
    const DWORD btnID = FindBtns(itemID, {word}).front();
    if (!SCBUICoreCom::IsSpBtn(btnID)) {
        throw ECCommandError("The button " + InQuotes(GetBtnText(itemID, btnID)) + " of " +
                             InQuotes(GetItemName(itemID)) +
                             " is no special button; \"special list\" lists these.");
    }
    return btnID;
}

DWORD CWorkspace::FindNumFld(const std::string& word) const
{
    const DWORD itemID = FindItem(word);
    DWORD fldID = 0;
    if (!GetEnv().GetFldID(itemID, fldID) || !GetEnv().GetSumValueCacheMngrObjRef().ExistNumDataItem(fldID)) {
        throw ECCommandError("The item " + InQuotes(GetItemName(itemID)) +
                             " cannot be summed: an item of type number is expected.");
    }
    return fldID;
}

CTypedBtnCnd CWorkspace::ReadCnd(const std::string& text) const
{
    return {CCndParser::Parse(text, [this](const std::string& word) { return FindNumFld(word); }), text};
}

std::string CWorkspace::ReadBtnText(const std::string& word) const
{
    std::string text;
    if (!SCHostText::IntoEngine(word, text)) {
        throw ECCommandError("The text " + InQuotes(word) + " holds a character that code page " +
                             std::to_string(_getmbcp()) + " lacks.");
    }
    return text;
}

void CWorkspace::RequireNewBtnText(DWORD itemID, const std::string& text, DWORD ignoredBtnID) const
{
    // The engine does not count buttons that are switched off; on again they would show the same.
    std::vector<DWORD> spBtnIDs;
    GetEnv().GetAllSpBtnIDListOfBtnClass(itemID, spBtnIDs, true);
    const auto showsText = [&](DWORD btnID) {
        const char* alias = nullptr;
        return btnID != ignoredBtnID && GetEnv().GetAliasOfBtn(itemID, btnID, alias) && alias != nullptr &&
               text == alias;
    };
    if (GetEnv().GetBtnExistInfoOfBtnClass(itemID, text.c_str(), static_cast<DWORD>(text.size()),
                                           ignoredBtnID) ||
        std::any_of(spBtnIDs.begin(), spBtnIDs.end(), showsText)) {
        throw ECCommandError("Another button of the item shows " +
                             InQuotes(SCHostText::FromEngine(text.c_str())) +
                             " already; the text must tell them apart.");
    }
}

std::string CWorkspace::GetWordOfNumFld(DWORD fldID) const
{
    DWORD itemID = 0;
    if (!GetEnv().GetBtnClassID(fldID, itemID) ||
        !GetEnv().GetSumValueCacheMngrObjRef().ExistNumDataItem(fldID))
        return {};
    const std::string name = GetItemName(itemID);
    return SCShownText::Escape(name) == name ? SCNameWord::Write(name, SCNameWord::MARK_OF_ITEM)
                                             : SCNameWord::WriteID(itemID, SCNameWord::MARK_OF_ITEM);
}

CWorkspace::SCalendar CWorkspace::GetCalendar() const
{
    const NSKZCore::CSourceDataMngr& table = GetTable();
    return {table.GetStartMonth(), table.GetCutOffDate(), table.GetDaysOfTheWeek()};
}

void CWorkspace::SetCalendar(const SCalendar& calendar, const std::string& command)
{
    NSKZCore::CSourceDataMngr changed(GetTable());
    SetCalendarIn(changed, calendar);
    GetAnalysis().Change(std::move(changed), command, [](CBUIDataMngr& env, NSKZCore::CProgressStatus&) {
        return env.AdjstAccordingToChangeDateCriterionInfo();
    });
}

bool CWorkspace::SetCalendarOfTable(const SCalendar& calendar)
{
    return SetCalendarIn(GetAnalysis().GetTableToPrepare(), calendar);
}

std::unique_ptr<CWorkspace> CWorkspace::CreateUnread() const
{
    return std::unique_ptr<CWorkspace>(new CWorkspace(*this, GetAnalysis().CreateUnread()));
}

CWorkspace::CWorkspace(const CWorkspace& other, std::unique_ptr<CAnalysis> analysis)
    : tablePath(other.tablePath), codePage(other.codePage), delimiter(other.delimiter)
{
    copies.push_back({NAME_OF_FIRST, std::move(analysis)});
}

void CWorkspace::TakeOver(CWorkspace& other) noexcept
{
    copies[present].analysis.swap(other.copies[other.present].analysis);
}

// ---- Copies

void CWorkspace::MakeCopy(const std::string& name)
{
    if (name.empty())
        throw ECCommandError("The name of a copy is expected, not an empty word.");
    if (std::any_of(copies.begin(), copies.end(), [&name](const SCopy& copy) { return copy.name == name; }))
        throw ECCommandError("There is a copy " + InQuotes(name) + " already; \"copies\" lists them.");
    const auto isTaken = [this](DWORD id) {
        return std::any_of(copies.begin(), copies.end(),
                           [id](const SCopy& copy) { return copy.analysis->GetEnv().GetID() == id; });
    };
    DWORD id = SCBUICoreCom::BUIDATAMNGR_ID_BEGIN;
    while (isTaken(id))
        ++id;
    copies.push_back({name, GetAnalysis().CreateCopy(id)});
}

void CWorkspace::UseCopy(const std::string& name)
{
    present = FindCopy(name);
}

void CWorkspace::DropCopy(const std::string& name)
{
    const std::size_t found = FindCopy(name);
    if (found == present)
        throw ECCommandError("The copy " + InQuotes(name) + " is the present one; use another one first.");
    copies.erase(copies.begin() + static_cast<std::ptrdiff_t>(found));
    if (found < present)
        --present;
}

std::size_t CWorkspace::FindCopy(const std::string& name) const
{
    const auto found =
        std::find_if(copies.begin(), copies.end(), [&name](const SCopy& copy) { return copy.name == name; });
    if (found == copies.end())
        throw ECCommandError("There is no copy " + InQuotes(name) + "; \"copies\" lists them.");
    return static_cast<std::size_t>(found - copies.begin());
}

std::vector<DWORD> CWorkspace::GetRecsOfBtns(DWORD itemID, const std::vector<DWORD>& btnIDs) const
{
    std::vector<DWORD> recs(GetRecCount());
    DWORD count = 0;
    GetEnv().GetRecListThatRelatesToBtns(itemID, btnIDs, recs.data(), count);
    recs.resize(count);
    return recs;
}

} // namespace NSKZ::Host
