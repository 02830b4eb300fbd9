#include "CModelComparison.h"

#include "CSumValueCacheMngr.h"
#include "ECAbnormalData.h"
#include "VCBtnClass.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>

namespace NSKZ::Test {

using NSKZCore::IBtnCnd;
using NSKZCore::SBtnClassIDAndBtnID;
using NSKZCore::SCBUICoreCom;
using NSKZCore::SCDeclareConstant;
using NSKZCore::SCKZCoreCom;
using NSKZCore::SSelectBtnIDList;
using NSKZCore::VCBtnClass;
using NSKZCore::VCDate;
using NSKZCore::VCSpBtn;

namespace {

constexpr DWORD UNTOUCHED = 0xA5A5A5A5;

// What has no identifier: 0, gaps between the kinds, special buttons that nobody made.
constexpr DWORD UNKNOWN_BTN_IDS[] = {0,          999999,     3000000001, 3500000000, 4079999999,
                                     4080000002, 4239999999, 4240000002, 4294967295};
constexpr DWORD UNKNOWN_CLASS_IDS[] = {0,          99,         1000000000, 1000000001,
                                       1999999999, 2000000001, 2000000009, 4294967295};

constexpr VCDate::EDateType DATE_TYPES[] = {VCDate::DATETYPE_GRGYEAR,
                                            VCDate::DATETYPE_JPNYEAR,
                                            VCDate::DATETYPE_MONTH,
                                            VCDate::DATETYPE_DAY,
                                            VCDate::DATETYPE_HOUR,
                                            VCDate::DATETYPE_MINUTE,
                                            VCDate::DATETYPE_SECOND,
                                            VCDate::DATETYPE_FISCALGRGYEAR,
                                            VCDate::DATETYPE_FISCALJPNYEAR,
                                            VCDate::DATETYPE_FISCALMONTH,
                                            VCDate::DATETYPE_HALFTERM,
                                            VCDate::DATETYPE_QUARTERTERM,
                                            VCDate::DATETYPE_WEEKOFYEAR,
                                            VCDate::DATETYPE_WEEKOFMONTH,
                                            VCDate::DATETYPE_WEEKOFFISCALYEAR,
                                            VCDate::DATETYPE_WEEKOFFISCALMONTH,
                                            VCDate::DATETYPE_DAYSOFWEEK,
                                            VCDate::DATETYPE_TIMEBASEDONNOON};
// The first of each family of display forms.
constexpr DWORD DATE_FORMS[] = {0, 6, 12, 101, 107, 201, 301, 401};

void Print(std::ostream& out, const SModelBtnRef& ref)
{
    out << ref.btnClassID << ':' << ref.btnID;
}
void Print(std::ostream& out, const std::string& text)
{
    out << '"' << text << '"';
}
void Print(std::ostream& out, double value)
{
    out.precision(17);
    out << value;
}
void Print(std::ostream& out, DWORD value)
{
    out << value;
}
void Print(std::ostream& out, bool value)
{
    out << (value ? "true" : "false");
}
void Print(std::ostream& out, const SSelectBtnIDList& share);

template <class TElement>
void Print(std::ostream& out, const std::vector<TElement>& list)
{
    out << '{';
    for (const TElement& element : list) {
        Print(out, element);
        out << ' ';
    }
    out << '}';
}
void Print(std::ostream& out, const SSelectBtnIDList& share)
{
    out << "class " << share.btnClassID << (share.newBtnMadeSelState ? " new " : " ");
    Print(out, share.btnIDList);
}

bool IsSame(double left, double right)
{
    if (std::isnan(left) || std::isnan(right))
        return std::isnan(left) && std::isnan(right);
    return left == right || std::fabs(left - right) <= 1e-9 * std::max(std::fabs(left), std::fabs(right));
}
bool IsSame(const std::vector<double>& left, const std::vector<double>& right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](double a, double b) { return IsSame(a, b); });
}
bool IsSame(const std::vector<SSelectBtnIDList>& left, const std::vector<SSelectBtnIDList>& right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const SSelectBtnIDList& a, const SSelectBtnIDList& b) {
                          return a.btnClassID == b.btnClassID && a.btnIDList == b.btnIDList &&
                                 a.newBtnMadeSelState == b.newBtnMadeSelState;
                      });
}
template <class TValue>
bool IsSame(const TValue& left, const TValue& right)
{
    return left == right;
}

IDList ToList(const RecSet& recs)
{
    return {recs.begin(), recs.end()};
}

std::string ToString(const VCDate& date)
{
    char buffer[VCDate::MAX_DATESTRING_SIZE];
    const bool isWritten = date.GetDateString(buffer, sizeof buffer);
    return std::to_string(date.GetType()) + ' ' + (isWritten ? buffer : "(nothing)");
}

// Puts the special buttons of a list into ascending order among themselves, and leaves the others in place.
void SortSpecial(IDList& ids)
{
    IDList special;
    std::copy_if(ids.begin(), ids.end(), std::back_inserter(special),
                 [](DWORD id) { return SCBUICoreCom::IsSpBtn(id); });
    std::sort(special.begin(), special.end());
    auto next = special.begin();
    for (DWORD& id : ids) {
        if (SCBUICoreCom::IsSpBtn(id))
            id = *next++;
    }
}

} // namespace

template <class TValue>
void CModelComparison::Check(const char* what, DWORD classID, DWORD btnID, const TValue& envSays,
                             const TValue& modelSays)
{
    if (IsSame(envSays, modelSays))
        return;
    differences << what << ", class " << classID << ", button " << btnID << ": environment ";
    Print(differences, envSays);
    differences << ", model ";
    Print(differences, modelSays);
    differences << '\n';
}

template <class TAsk>
IDList CModelComparison::AskRecs(const char* what, const TAsk& ask)
{
    IDList recs(model.GetRecCount() + 1, UNTOUCHED);
    DWORD count = 0;
    const bool result = ask(recs.data(), count);
    Check(what, 0, 0, result, true);
    Check(what, 0, 0, recs.back(), UNTOUCHED);
    recs.resize(std::min<std::size_t>(count, recs.size()));
    return recs;
}

DWORD CModelComparison::ChooseClassID()
{
    if (model.GetItems().empty() || random.IsOneOf(20))
        return UNKNOWN_CLASS_IDS[random.GetBelow(std::size(UNKNOWN_CLASS_IDS))];
    return std::next(model.GetItems().begin(), random.GetBelow(static_cast<DWORD>(model.GetItems().size())))
        ->first;
}

DWORD CModelComparison::ChooseBtnID(DWORD classID)
{
    const auto found = model.GetItems().find(classID);
    if (found == model.GetItems().end() || random.IsOneOf(20))
        return UNKNOWN_BTN_IDS[random.GetBelow(std::size(UNKNOWN_BTN_IDS))];
    // Special buttons come behind all others.
    const auto& btns = found->second.btns;
    const auto firstSpecial = btns.lower_bound(SCBUICoreCom::BTN_ID_INC_BEGIN);
    if (firstSpecial != btns.end() && random.IsOneOf(3)) {
        const auto count = static_cast<DWORD>(std::distance(firstSpecial, btns.end()));
        return std::next(firstSpecial, random.GetBelow(count))->first;
    }
    if (btns.empty())
        return SCBUICoreCom::BTN_ID_VIRINC_BEGIN;
    return std::next(btns.begin(), random.GetBelow(static_cast<DWORD>(btns.size())))->first;
}

DWORD CModelComparison::ChooseNumID()
{
    return random.GetBelow(10);
}

std::string CModelComparison::Compare()
{
    CompareEnvironment();
    for (const auto& [classID, item] : model.GetItems())
        CompareItem(item);
    CompareSums();
    CompareUnknown();
    return differences.str();
}

void CModelComparison::CompareEnvironment()
{
    Check<DWORD>("relation mode", 0, 0, env.GetRelationMode(), model.GetRelationMode());
    Check("multiple selection", 0, 0, env.GetMultiSelectionInfo(), model.GetMultiSelectionInfo());
    Check("limitation", 0, 0, env.IsRecListLimitationExecuted(), model.IsLimited());
    const NSKZCore::INumCnd* cnd = nullptr;
    Check("numeric condition", 0, 0, env.GetNumCnd(cnd), model.HasNumCnd());
    Check("selective state", 0, 0, env.IsBtnSelectiveState(), model.IsBtnSelectiveState());
    Check("target records", 0, 0,
          AskRecs("GetTargetRecList",
                  [&](DWORD* recs, DWORD& count) { return env.GetTargetRecList(recs, count); }),
          ToList(model.GetTargetRecList()));

    Check("levels", 0, 0, env.GetHierCount(), static_cast<DWORD>(model.GetLevels().size()));
    DWORD position = 0;
    for (const SModelLevel& level : model.GetLevels()) {
        DWORD classID = 0;
        DWORD count = 0;
        Check("level", position, 0, env.GetHierInfo(position, classID, count), true);
        Check("class of level", position, 0, classID, level.classID);
        Check("records of level", position, 0, count, static_cast<DWORD>(level.recs.size()));
        ++position;
    }
    DWORD classID = UNTOUCHED;
    DWORD count = UNTOUCHED;
    Check("level past the end", position, 0, env.GetHierInfo(position, classID, count), false);
    Check("output of it", position, 0, classID == UNTOUCHED && count == UNTOUCHED, true);

    Check("entries of the history", 0, 0, env.GetUndoOpeCountOfTheSrcData(),
          static_cast<DWORD>(model.GetUndoOpeCount()));

    std::vector<SSelectBtnIDList> selection(1);
    env.GetAllBtnSelectionInfo(selection);
    Check("whole selection", 0, 0, selection, model.GetAllBtnSelectionInfo());
    IDList ofEnv(3, UNTOUCHED);
    IDList ofModel(3, UNTOUCHED);
    Check("has a difference", 0, 0, env.GetSelBtnsInfoForDiffCnd(ofEnv[0], ofEnv[1], ofEnv[2]),
          model.GetSelBtnsInfoForDiffCnd(ofModel[0], ofModel[1], ofModel[2]));
    Check("difference", 0, 0, ofEnv, ofModel);
    env.GetAllBtnClassSelectionInfo(ofEnv);
    Check("selected classes", 0, 0, ofEnv, model.GetSelectedClasses());

    const bool includeIneffective = random.IsOneOf(2);
    ofModel.clear();
    for (const auto& [id, item] : model.GetItems()) {
        if (item.effective || includeIneffective)
            ofModel.push_back(id);
    }
    Check("GetAllBtnClassIDList", 0, 0, env.GetAllBtnClassIDList(ofEnv, includeIneffective),
          static_cast<DWORD>(model.GetItems().size()));
    Check("all classes", 0, 0, ofEnv, ofModel);
    std::map<DWORD, std::string> symbols;
    std::map<DWORD, std::string> symbolsOfModel;
    for (const auto& [id, item] : model.GetItems()) {
        if (item.type == SCDeclareConstant::DATATYPE_DATE)
            symbolsOfModel[id] = "D" + std::to_string(id);
    }
    Check("GetSymbolListOfDateBtnClasses", 0, 0, env.GetSymbolListOfDateBtnClasses(symbols), true);
    Check("symbols", 0, 0, symbols == symbolsOfModel, true);
}

// What a class is, apart from its buttons.
void CModelComparison::CompareClass(const SModelItem& item)
{
    const DWORD id = item.classID;
    bool effective = false;
    Check("GetEffectiveInfoOfBtnClass", id, 0, env.GetEffectiveInfoOfBtnClass(id, effective), true);
    Check("class effective", id, 0, effective, item.effective);
    SCBUICoreCom::EBtnClassType type{};
    Check("GetTypeOfBtnClass", id, 0, env.GetTypeOfBtnClass(id, type), true);
    Check<DWORD>("type of class", id, 0, type,
                 item.isVirtual ? DWORD{SCBUICoreCom::BTNCLSTYPE_VIR} : DWORD{item.type} + 1);
    DWORD fldID = UNTOUCHED;
    const bool hasFld = !item.isVirtual && !item.isOut;
    Check("GetFldID", id, 0, env.GetFldID(id, fldID), hasFld);
    Check("field", id, 0, fldID, hasFld ? item.fldID : UNTOUCHED);
    DWORD classIDOfFld = UNTOUCHED;
    if (hasFld) {
        Check("GetBtnClassID", id, 0, env.GetBtnClassID(fldID, classIDOfFld), true);
        Check("class of its field", id, 0, classIDOfFld, id);
    }
    const char* name = nullptr;
    effective = false;
    Check("GetNameOfVirBtnClass", id, 0, env.GetNameOfVirBtnClass(id, name), item.isVirtual);
    Check<std::string>("name of class", id, 0, name == nullptr ? "" : name, item.name);
    Check("GetEffectiveInfoOfVirBtnClass", id, 0, env.GetEffectiveInfoOfVirBtnClass(id, effective),
          item.isVirtual);
    Check("virtual class effective", id, 0, effective, item.isVirtual && item.effective);
    if (item.isOut)
        return;
    const std::string nameOfClass = item.isVirtual ? item.name : model.FindFld(item.fldID)->name;
    const auto len = static_cast<DWORD>(nameOfClass.size());
    Check("class of the name", id, 0, env.ExistBtnClass(nameOfClass.c_str(), len), true);
    Check("another class of the name", id, 0, env.ExistBtnClass(nameOfClass.c_str(), len, id),
          model.ExistBtnClass(nameOfClass, id));
}

void CModelComparison::CompareItem(const SModelItem& item)
{
    const DWORD id = item.classID;
    DWORD count = 0;
    Check("GetBtnCount", id, 0, env.GetBtnCountOfBtnClass(id, count), true);
    Check("buttons", id, 0, count, static_cast<DWORD>(item.btns.size()));
    Check("GetSelBtnCount", id, 0, env.GetSelBtnCountOfBtnClass(id, count), true);
    Check("count of selected", id, 0, count, item.selBtnCount);
    Check("GetDispBtnCount", id, 0, env.GetDispBtnCountOfBtnClass(id, count), true);
    Check("count of displayed", id, 0, count, static_cast<DWORD>(item.ListDisplayed().size()));

    Check("GetIneffectiveBtnCount", id, 0, env.GetIneffectiveBtnCountOfBtnClass(id, count), true);
    Check("count of ineffective", id, 0, count, item.CountIneffective());
    count = UNTOUCHED;
    Check("GetSystemMngrSpBtnCount", id, 0, env.GetSystemMngrSpBtnCountOfBtnClass(id, count), true);
    Check("count of those of the system", id, 0, count, static_cast<DWORD>(item.groups.size()));

    bool state = false;
    Check("GetDispEmpValBtnInfo", id, 0, env.GetDispEmpValBtnInfoOfBtnClass(id, state), !item.isVirtual);
    Check("empty value displayed", id, 0, state, !item.isVirtual && item.displaysEmpVal);
    Check("GetBtnSelectiveState", id, 0, env.GetBtnSelectiveStateOfBtnClass(id, state), true);
    Check("selective state", id, 0, state, item.selective);
    Check("GetNewBtnMadeSelState", id, 0, env.GetNewBtnMadeSelStateOfBtnClass(id, state), true);
    Check("state of new buttons", id, 0, state, item.newBtnMadeSelState);
    Check("GetSelectionInfoOfBtnClass", id, 0, env.GetSelectionInfoOfBtnClass(id, state), true);
    Check("class selected", id, 0, state, item.selected);

    IDList ids(2, UNTOUCHED);
    Check("GetSelBtnIDList", id, 0, env.GetSelBtnIDListOfBtnClass(id, ids), true);
    Check("selected", id, 0, ids, item.ListSelected());
    Check("GetDispSelBtnIDList", id, 0, env.GetDispSelBtnIDListOfBtnClass(id, ids), true);
    Check("displayed selected", id, 0, ids, item.ListDisplayedSelected());
    Check("GetDispBtnIDList", id, 0, env.GetDispBtnIDListOfBtnClass(id, ids), true);
    Check("displayed", id, 0, ids, item.ListDisplayed());
    const bool includeIneffective = random.IsOneOf(2);
    IDList all = item.ListAll();
    if (!includeIneffective)
        std::erase_if(all, [&](DWORD btnID) { return !item.btns.at(btnID).effective; });
    Check("GetAllBtnIDList", id, 0, env.GetAllBtnIDListOfBtnClass(id, ids, includeIneffective), true);
    Check("all buttons", id, 0, ids, all);
    Check("GetAllSpBtnIDList", id, 0, env.GetAllSpBtnIDListOfBtnClass(id, ids, includeIneffective), true);
    Check("all special buttons", id, 0, ids, item.ListSpecial(includeIneffective));

    Check("target records of class", id, 0,
          AskRecs("GetTargetRecListOfBtnClass",
                  [&](DWORD* recs, DWORD& n) { return env.GetTargetRecListOfBtnClass(id, recs, n); }),
          ToList(model.GetTargetRecListOfBtnClass(id)));
    unsigned int depthOfEnv = UNTOUCHED;
    unsigned int depthOfModel = UNTOUCHED;
    Check("has depth", id, 0, env.GetHierDepthOfBtnClass(id, depthOfEnv),
          model.GetHierDepthOfBtnClass(id, depthOfModel));
    Check<DWORD>("depth", id, 0, depthOfEnv, depthOfModel);

    if (item.isVirtual || random.IsOneOf(4))
        CompareClass(item);
    CompareBtns(item);
    CompareSpBtns(item);
    CompareOrders(item);
    if (item.IsOfDates() || random.IsOneOf(20))
        CompareDates(item);
    if (random.IsOneOf(2))
        CompareRecs(item);
}

void CModelComparison::CompareBtns(const SModelItem& item)
{
    const DWORD id = item.classID;
    for (const auto& [btnID, btn] : item.btns) {
        unsigned int visibleInfo = UNTOUCHED;
        Check("GetVisibleInfoOfBtn", id, btnID, env.GetVisibleInfoOfBtn(id, btnID, visibleInfo), true);
        Check<DWORD>("visible info", id, btnID, visibleInfo, btn.visibleInfo);
        bool sel = false;
        Check("GetSelectionInfoOfBtn", id, btnID, env.GetSelectionInfoOfBtn(id, btnID, sel), true);
        Check("selected", id, btnID, sel, btn.sel);
        if (!btn.holders.empty() || !btn.outerHolders.empty() || random.IsOneOf(10))
            CompareWayUp(item, btnID);
    }

    // What seldom changes, of one button.
    const DWORD btnID = ChooseBtnID(id);
    const auto found = item.btns.find(btnID);
    const bool exists = found != item.btns.end();
    Check("exists", id, btnID, env.GetBtnExistInfoOfBtnClass(id, btnID), exists && found->second.effective);
    bool effective = false;
    Check("GetEffectiveInfoOfBtn", id, btnID, env.GetEffectiveInfoOfBtn(id, btnID, effective), exists);
    Check("effective", id, btnID, effective, exists && found->second.effective);
    SCBUICoreCom::EBtnType type{};
    SCBUICoreCom::EBtnType typeOfID{};
    SCBUICoreCom::GetBtnType(btnID, typeOfID);
    Check("GetTypeOfBtn", id, btnID, env.GetTypeOfBtn(id, btnID, type), exists);
    Check<DWORD>("type", id, btnID, type, exists ? typeOfID : SCBUICoreCom::EBtnType{});
    const char* const untouched = "untouched";
    const char* text = untouched;
    Check("has shown text", id, btnID, env.GetAliasOfBtn(id, btnID, text), exists);
    Check<std::string>("shown text", id, btnID, text == nullptr ? "" : text,
                       exists ? found->second.GetShownText() : untouched);
    text = untouched;
    Check("has name", id, btnID, env.GetNameOfBtn(id, btnID, text), exists);
    if (exists && !found->second.name)
        Check("has no name", id, btnID, text == nullptr, true);
    else
        Check<std::string>("name", id, btnID, text, exists ? *found->second.name : untouched);
    bool visible = false;
    Check("has visible state", id, btnID, env.GetVisibleStateOfBtn(id, btnID, visible), exists);
    Check("visible", id, btnID, visible, exists && found->second.visibleInfo == 0);
    unsigned int visibleInfo = UNTOUCHED;
    Check("has visible info", id, btnID, env.GetVisibleInfoOfBtn(id, btnID, visibleInfo), exists);
    Check("its output", id, btnID, (visibleInfo == UNTOUCHED) != exists, true);

    // Whether a text is shown by another button.
    if (item.btns.empty())
        return;
    const std::string& shown =
        std::next(item.btns.begin(), random.GetBelow(static_cast<DWORD>(item.btns.size())))
            ->second.GetShownText();
    bool isShown = false;
    for (const auto& [otherID, other] : item.btns)
        isShown = isShown || (otherID != btnID && other.effective && other.GetShownText() == shown);
    Check("shows the text", id, btnID,
          env.GetBtnExistInfoOfBtnClass(id, shown.c_str(), static_cast<DWORD>(shown.size()), btnID), isShown);
}

// What holds a button, directly and at any height.
void CModelComparison::CompareWayUp(const SModelItem& item, DWORD btnID)
{
    const DWORD id = item.classID;
    const auto found = item.btns.find(btnID);
    const bool exists = found != item.btns.end();
    const IDList untouched = {UNTOUCHED};
    IDList ids = untouched;
    Check("GetSpBtnIDListIncludingBtn", id, btnID, env.GetSpBtnIDListIncludingBtn(id, btnID, ids), exists);
    Check("special buttons with the button", id, btnID, ids,
          exists ? IDList(found->second.holders.begin(), found->second.holders.end()) : untouched);

    const bool flag = random.IsOneOf(2);
    ids = untouched;
    const std::optional<IDList> roots = model.GetRootSpBtnIDListIncludingBtn(item, btnID, flag);
    Check("GetRootSpBtnIDListIncludingBtn", id, btnID,
          env.GetRootSpBtnIDListIncludingBtn(id, btnID, ids, flag), roots.has_value());

    Check(flag ? "roots, ineffective ones too" : "roots", id, btnID, ids, roots.value_or(untouched));

    std::set<SBtnClassIDAndBtnID> influenced;
    Check("GetSpBtnIDListThatTheSpecifiedBtnInfluences", id, btnID,
          env.GetSpBtnIDListThatTheSpecifiedBtnInfluences(id, btnID, influenced, flag), true);
    Check(flag ? "directly influenced" : "influenced", id, btnID,
          std::vector<SModelBtnRef>(influenced.begin(), influenced.end()), [&] {
              const BtnRefSet ofModel = model.GetSpBtnsThatTheBtnInfluences(item, btnID, flag);
              return std::vector<SModelBtnRef>(ofModel.begin(), ofModel.end());
          }());
}

void CModelComparison::CompareSpBtns(const SModelItem& item)
{
    for (const DWORD spBtnID : item.ListSpecial(true))
        CompareSpBtn(item, spBtnID, item.btns.at(spBtnID));
    if (random.IsOneOf(4))
        CompareNoSpBtn(item);
}

void CModelComparison::CompareSpBtn(const SModelItem& item, DWORD btnID, const SModelBtn& btn)
{
    const DWORD id = item.classID;
    bool state = false;
    Check("GetEffectiveInfoOfSpBtn", id, btnID, env.GetEffectiveInfoOfSpBtn(id, btnID, state), true);
    Check("special button effective", id, btnID, state, btn.effective);
    state = false;
    Check("GetBtnMngrInfoOfSpBtn", id, btnID, env.GetBtnMngrInfoOfSpBtn(id, btnID, state), true);
    Check("managed by the user", id, btnID, state, !item.IsManagedBySystem(btnID));
    state = false;
    Check("GetDispMemberBtnInfoOfIncBtn", id, btnID, env.GetDispMemberBtnInfoOfIncBtn(id, btnID, state),
          SCBUICoreCom::IsIncBtn(btnID));
    Check("members displayed", id, btnID, state, btn.dispMember);
    VCSpBtn::EMmbBtnSelMth method{};
    Check("GetMmbBtnSelMthOfSpBtn", id, btnID, env.GetMmbBtnSelMthOfSpBtn(id, btnID, method), true);
    Check("selects by condition", id, btnID, method == VCSpBtn::MMBBTNSELMTH_CONDITION, btn.byCondition);

    DWORD refClassID = UNTOUCHED;
    Check("GetRefBtnClassIDOfVirIncBtn", id, btnID, env.GetRefBtnClassIDOfVirIncBtn(id, btnID, refClassID),
          SCBUICoreCom::IsVirIncBtn(btnID));
    const DWORD refClassIDOfModel = btn.hasLostRef ? 0 : btn.refClassID;
    Check("class of members", id, btnID, refClassID,
          SCBUICoreCom::IsVirIncBtn(btnID) ? refClassIDOfModel : UNTOUCHED);
    DWORD count = UNTOUCHED;
    IDList ids(1, UNTOUCHED);
    Check("GetMemberBtnCountOfSpBtn", id, btnID, env.GetMemberBtnCountOfSpBtn(id, btnID, count), true);
    Check("count of members", id, btnID, count, static_cast<DWORD>(btn.members.size()));
    Check("GetMemberBtnIDListOfSpBtn", id, btnID, env.GetMemberBtnIDListOfSpBtn(id, btnID, ids), true);
    Check("members", id, btnID, ids, btn.members);
    const std::optional<IDList> displayed = model.GetDisplayedMembers(item, btn);
    bool hasThrown = false;
    try {
        Check("GetDisplayedMemberBtnIDListOfSpBtn", id, btnID,
              env.GetDisplayedMemberBtnIDListOfSpBtn(id, btnID, ids), true);
        Check("displayed members", id, btnID, ids, displayed.value_or(ids));
    } catch (const NSKZCore::ECAbnormalData&) {
        hasThrown = true;
    }
    Check("GetDisplayedMemberBtnIDListOfSpBtn throws", id, btnID, hasThrown, !displayed);

    CompareCnd(item, btnID, btn);
    if (random.IsOneOf(3))
        CompareRecsOfBtn(item, btnID);
}

void CModelComparison::CompareCnd(const SModelItem& item, DWORD btnID, const SModelBtn& btn)
{
    const DWORD id = item.classID;
    const IBtnCnd* cnd = nullptr;
    Check<DWORD>("GetMemberBtnCndOfSpBtn", id, btnID, env.GetMemberBtnCndOfSpBtn(id, btnID, cnd),
                 btn.cnd ? VCBtnClass::GETMMBBTNCND_OK : VCBtnClass::GETMMBBTNCND_NOCND);
    Check("has condition", id, btnID, cnd != nullptr, btn.cnd.has_value());
    if (cnd == nullptr || !btn.cnd)
        return;
    const DWORD numID = ChooseNumID();
    Check("condition asks for item", id, btnID, cnd->HasNumDataItem(numID), btn.cnd->HasNumDataItem(numID));
    if (!random.IsOneOf(4))
        return;

    // What it picks from a population of the host's.
    IDList population;
    for (DWORD left = random.GetBelow(12); left > 0; --left) {
        const DWORD chosenID = ChooseBtnID(id);
        if (std::find(population.begin(), population.end(), chosenID) == population.end())
            population.push_back(chosenID);
    }
    IDList picked(1, UNTOUCHED);
    const std::optional<IDList> pickedByModel = model.Evaluate(*btn.cnd, id, population);
    Check("condition answers", id, btnID,
          cnd->GetBtnIDListThatAppliesToTheCnd(id, population, env.GetSumValueCacheMngrObjRef(), picked),
          pickedByModel.has_value());
    if (pickedByModel)
        Check("picked by the condition", id, btnID, picked, *pickedByModel);
    const DWORD aloneID = ChooseBtnID(id);
    bool applies = false;
    const std::optional<IDList> alone = model.Evaluate(*btn.cnd, id, {aloneID});
    Check("condition answers for one", id, btnID,
          cnd->CheckWhetherBtnIDAppliesToTheCnd(id, aloneID, env.GetSumValueCacheMngrObjRef(), applies),
          alone.has_value());
    Check("condition applies to one", id, btnID, applies, alone.has_value() && !alone->empty());
}

// Queries of special buttons with the identifier of another button or of none.
void CModelComparison::CompareNoSpBtn(const SModelItem& item)
{
    const DWORD id = item.classID;
    const DWORD btnID = ChooseBtnID(id);
    if (item.btns.count(btnID) != 0 && SCBUICoreCom::IsSpBtn(btnID))
        return;
    bool state = false;
    DWORD count = UNTOUCHED;
    IDList ids(1, UNTOUCHED);
    VCSpBtn::EMmbBtnSelMth method{};
    const IBtnCnd* cnd = nullptr;
    Check("special queries of another button", id, btnID,
          env.GetEffectiveInfoOfSpBtn(id, btnID, state) || env.GetMmbBtnSelMthOfSpBtn(id, btnID, method) ||
              env.GetMemberBtnCountOfSpBtn(id, btnID, count) ||
              env.GetMemberBtnIDListOfSpBtn(id, btnID, ids) ||
              env.GetDisplayedMemberBtnIDListOfSpBtn(id, btnID, ids) ||
              env.GetDispMemberBtnInfoOfIncBtn(id, btnID, state) ||
              env.GetRefBtnClassIDOfVirIncBtn(id, btnID, count) ||
              env.GetMemberBtnCndOfSpBtn(id, btnID, cnd) != VCBtnClass::GETMMBBTNCND_NOSPBTN,
          false);
    Check("their outputs", id, btnID,
          state || count != UNTOUCHED || ids != IDList{UNTOUCHED} || cnd != nullptr ||
              method != VCSpBtn::EMmbBtnSelMth{},
          false);
    Check("managed at all", id, btnID, env.GetBtnMngrInfoOfSpBtn(id, btnID, state),
          SCBUICoreCom::IsSpBtn(btnID));
    CompareWayUp(item, btnID);
}

void CModelComparison::CompareOrders(const SModelItem& item)
{
    const DWORD id = item.classID;
    constexpr unsigned int FLAGS[] = {VCBtnClass::ORDLIST_DESCEND, VCBtnClass::ORDLIST_INCLUDE_NONDISPBTNS,
                                      VCBtnClass::ORDLIST_INCLUDE_CNDCLLMEMBERBTNS,
                                      VCBtnClass::ORDLIST_TAILEND_EMPVALBTN,
                                      VCBtnClass::ORDLIST_TAILEND_CNDCLLBTN};
    unsigned int flags = VCBtnClass::ORDLIST_NORMAL;
    for (const unsigned int flag : FLAGS)
        flags |= random.IsOneOf(2) ? flag : 0;

    IDList ids(2, UNTOUCHED);
    Check("GetBtnAppOrdList", id, flags, env.GetBtnAppOrdListOfBtnClass(id, flags, ids), true);
    IDList order = model.GetBtnAppOrdList(item, flags);
    const IDList spBtnIDs = item.ListSpecial(false);
    if (!std::all_of(spBtnIDs.begin(), spBtnIDs.end(),
                     [&](DWORD spBtnID) { return item.btns.at(spBtnID).isTimeCertain; })) {
        // One was made around the turn of a second: their order among themselves is not known.
        SortSpecial(ids);
        SortSpecial(order);
    }
    Check("order of appearance, flags for button", id, flags, ids, order);
    Check("GetBtnNameOrdList", id, flags, env.GetBtnNameOrdListOfBtnClass(id, flags, ids), true);
    Check("order of names, flags for button", id, flags, ids, model.GetBtnNameOrdList(item, flags));
    if (!random.IsOneOf(3))
        return;
    order.clear();
    for (DWORD left = random.GetBelow(12); left > 0; --left)
        order.push_back(ChooseBtnID(id));
    Check("GetBtnUnknownOrdList", id, flags, env.GetBtnUnknownOrdListOfBtnClass(id, flags, order, ids), true);
    Check("order of the host, flags for button", id, flags, ids,
          model.GetBtnUnknownOrdList(item, flags, order));
}

void CModelComparison::CompareRecs(const SModelItem& item)
{
    const DWORD id = item.classID;
    IDList btnIDs;
    for (DWORD left = random.GetBelow(5); left > 0; --left)
        btnIDs.push_back(ChooseBtnID(id));
    IDList recs(model.GetRecCount() + 1, UNTOUCHED);
    DWORD count = UNTOUCHED;
    const std::optional<RecSet> ofBtns = model.GetRecsOfBtns(item, btnIDs);
    Check("has records of buttons", id, 0, env.GetRecListThatRelatesToBtns(id, btnIDs, recs.data(), count),
          ofBtns.has_value());
    if (ofBtns) {
        recs.resize(std::min<std::size_t>(count, recs.size()));
        Check("records of buttons", id, 0, recs, ToList(*ofBtns));
    }

    CompareRecsOfBtn(item, ChooseBtnID(id));

    recs.clear();
    for (DWORD rec = 0; rec < model.GetRecCount(); ++rec) {
        if (random.IsOneOf(4))
            recs.push_back(rec);
    }
    IDList related(1, UNTOUCHED);
    if (item.isVirtual) {
        Check("buttons of records of a virtual class", id, 0,
              env.GetBtnIDListThatRelatesToRecListFromBtnClass(id, static_cast<DWORD>(recs.size()),
                                                               recs.data(), related) ||
                  related != IDList{UNTOUCHED},
              false);
        return;
    }
    Check("GetBtnIDListThatRelatesToRecList", id, 0,
          env.GetBtnIDListThatRelatesToRecListFromBtnClass(id, static_cast<DWORD>(recs.size()), recs.data(),
                                                           related),
          true);
    Check("buttons of records", id, 0, related, model.GetBtnsOfRecs(item, recs));
}

void CModelComparison::CompareRecsOfBtn(const SModelItem& item, DWORD btnID)
{
    const DWORD id = item.classID;
    DWORD count = UNTOUCHED;
    IDList recs(model.GetRecCount() + 1, UNTOUCHED);
    const std::optional<RecSet> ofBtn = model.GetRecsOfBtn(item, btnID);
    Check("has records of button", id, btnID, env.GetRecListThatRelatesToBtn(id, btnID, recs.data(), count),
          ofBtn.has_value());
    if (ofBtn) {
        recs.resize(std::min<std::size_t>(count, recs.size()));
        Check("records of button", id, btnID, recs, ToList(*ofBtn));
    }
}

// ---- Dates and times

// One of the item, one that a form makes of it, or one far from all.
SModelDate CModelComparison::ChooseDate(const SModelItem& item)
{
    SModelDate date;
    date.year = 1860 + static_cast<int>(random.IsOneOf(4) ? random.GetBelow(200) : random.GetBelow(3) * 80);
    date.month = 1 + static_cast<int>(random.GetBelow(12));
    date.day = 1 + static_cast<int>(random.GetBelow(28));
    if (!item.dates.empty() && !random.IsOneOf(5))
        date = std::next(item.dates.begin(), random.GetBelow(static_cast<DWORD>(item.dates.size())))->second;
    if (random.IsOneOf(30))
        return {};
    if (random.IsOneOf(30))
        date.hour = static_cast<int>(random.GetBelow(24));
    std::optional<SModelDate> part = date;
    const SModelCriteria& criteria = model.GetTable().criteria;
    if (random.IsOneOf(4)) {
        part = date.GetGroup(DATE_TYPES[random.GetBelow(std::size(DATE_TYPES))], criteria);
    } else if (!random.IsOneOf(4)) {
        SCDeclareConstant::SDateDispForm form;
        form.kind = 1;
        form.form = DATE_FORMS[random.GetBelow(std::size(DATE_FORMS))] + random.GetBelow(6);
        form.option = random.GetBelow(2);
        part = date.GetGroup(form, criteria);
    }
    return part.value_or(date);
}

void CModelComparison::CompareDates(const SModelItem& item)
{
    const DWORD id = item.classID;
    const bool isDate = item.type == SCDeclareConstant::DATATYPE_DATE;
    const bool isTime = item.type == SCDeclareConstant::DATATYPE_TIME;
    SCDeclareConstant::SDateDispForm dateForm;
    SCDeclareConstant::STimeDispForm timeForm;
    Check("GetDispFormOfDateBtnClass", id, 0, env.GetDispFormOfDateBtnClass(id, dateForm), isDate);
    Check("display form of dates", id, 0, dateForm == item.dateForm, true);
    Check("GetDispFormOfTimeBtnClass", id, 0, env.GetDispFormOfTimeBtnClass(id, timeForm), isTime);
    Check("display form of times", id, 0, timeForm == item.timeForm, true);
    if (random.IsOneOf(2))
        CompareGroups(item);
    if (!isDate) {
        CompareNoDates(item);
        return;
    }
    CompareBtnsOfDates(item);
    CompareLatest(item);
}

void CModelComparison::CompareGroups(const SModelItem& item)
{
    const DWORD id = item.classID;
    const VCDate::EDateType type = DATE_TYPES[random.GetBelow(std::size(DATE_TYPES))];
    const bool isOfTime = (type >= VCDate::DATETYPE_HOUR && type <= VCDate::DATETYPE_SECOND) ||
                          type == VCDate::DATETYPE_TIMEBASEDONNOON;
    const bool isOfDate = !isOfTime;
    NSKZCore::CDateGroupMap ofDates;
    NSKZCore::CDateGroupMap ofTimes;
    ofDates[7];
    ofTimes[7];
    Check("GetGroupedBtnIDListsOfDateBtnClass", id, type,
          env.GetGroupedBtnIDListsOfDateBtnClass(id, type, ofDates),
          item.type == SCDeclareConstant::DATATYPE_DATE && isOfDate);
    Check("GetGroupedBtnIDListsOfTimeBtnClass", id, type,
          env.GetGroupedBtnIDListsOfTimeBtnClass(id, type, ofTimes),
          item.type == SCDeclareConstant::DATATYPE_TIME && isOfTime);
    const bool hasDates = item.type == SCDeclareConstant::DATATYPE_DATE && isOfDate;
    const bool hasTimes = item.type == SCDeclareConstant::DATATYPE_TIME && isOfTime;
    Check("untouched groups of dates", id, type,
          ofDates.size() == 1 && ofDates.begin()->second.date == nullptr, !hasDates);
    Check("untouched groups of times", id, type,
          ofTimes.size() == 1 && ofTimes.begin()->second.date == nullptr, !hasTimes);
    if (!hasDates && !hasTimes)
        return;
    const NSKZCore::CDateGroupMap& groups = hasDates ? ofDates : ofTimes;
    const std::vector<CModelEnv::SGroup> groupsOfModel = model.GetGroups(item, type);
    Check("count of groups", id, type, static_cast<DWORD>(groups.size()),
          static_cast<DWORD>(groupsOfModel.size()));
    auto ofModel = groupsOfModel.begin();
    for (const auto& [number, group] : groups) {
        if (ofModel == groupsOfModel.end())
            break;
        Check("buttons of a group", id, type, group.btnIDList, ofModel->btnIDs);
        Check("date of a group", id, type, ToString(*group.date), ToString(*ofModel->date.Make()));
        ++ofModel;
    }
}

void CModelComparison::CompareBtnsOfDates(const SModelItem& item)
{
    const DWORD id = item.classID;
    const SModelDate date = ChooseDate(item);
    const std::unique_ptr<VCDate> madeDate = date.Make();
    const auto cmpOperator = static_cast<SCKZCoreCom::ECmpOperator>(
        random.IsOneOf(50) ? random.GetBelow(2) * 7 : 1 + random.GetBelow(6));
    const std::optional<IDList> ofModel = model.GetBtnsOfDates(item, cmpOperator, date);
    const std::string what =
        "buttons in relation " + std::to_string(cmpOperator) + " to " + ToString(*madeDate);
    IDList btnIDs(1, UNTOUCHED);
    Check((what + " are to be had").c_str(), id, 0,
          env.GetGroupedBtnIDListOfDateBtnClass(id, *madeDate, cmpOperator, btnIDs), ofModel.has_value());
    Check(what.c_str(), id, 0, btnIDs, ofModel.value_or(IDList{UNTOUCHED}));

    IDList recs(model.GetRecCount() + 1, UNTOUCHED);
    NSKZCore::SRecordList recList{recs.data(), UNTOUCHED};
    Check("their records are to be had", id, 0,
          env.GetGroupedRecListOfDateBtnClass(id, *madeDate, cmpOperator, recList), ofModel.has_value());
    if (!ofModel)
        return;
    recs.resize(std::min<std::size_t>(recList.recCount, recs.size()));
    Check("their records", id, 0, recs, ToList(*model.GetRecsOfBtns(item, *ofModel)));
}

void CModelComparison::CompareLatest(const SModelItem& item)
{
    const DWORD id = item.classID;
    const SModelCriteria& criteria = model.GetTable().criteria;
    const auto getNumber = [&](const SModelDate& date) {
        unsigned long long number = 0;
        date.Make()->GetDateNumeric(static_cast<DWORD>(criteria.startMonth),
                                    static_cast<DWORD>(criteria.cutOffDate),
                                    static_cast<VCDate::EDaysOfTheWeek>(criteria.firstDayOfWeek), number);
        return number;
    };
    IDList all;
    for (const auto& [btnID, date] : item.dates)
        all.push_back(btnID);
    const std::optional<DWORD> latest = model.GetLatestBtn(item, all);
    const VCDate* date = nullptr;
    Check("GetLatestDateOfDateBtnClass", id, 0, env.GetLatestDateOfDateBtnClass(id, date),
          latest.has_value());
    Check("latest date", id, 0, date == nullptr ? "" : ToString(*date),
          latest ? ToString(*item.dates.at(*latest).Make()) : "");

    IDList recs;
    const DWORD oneOf = 1 + random.GetBelow(6);
    for (DWORD rec = 0; rec < model.GetRecCount(); ++rec) {
        if (random.IsOneOf(oneOf))
            recs.push_back(rec);
    }
    DWORD recNum = UNTOUCHED;
    unsigned long long number = UNTOUCHED;
    const std::optional<DWORD> latestBtn = model.GetLatestBtn(item, model.GetBtnsOfRecs(item, recs));
    Check("GetLatestRecNumOfDateBtnClass", id, 0,
          env.GetLatestRecNumOfDateBtnClass(id, recs.data(), static_cast<DWORD>(recs.size()), recNum, number),
          latestBtn.has_value());
    DWORD recNumOfModel = UNTOUCHED;
    unsigned long long numberOfModel = UNTOUCHED;
    if (latestBtn) {
        for (const DWORD rec : recs) {
            if (item.btnOfRec.at(rec) == *latestBtn)
                recNumOfModel = rec;
        }
        numberOfModel = getNumber(item.dates.at(*latestBtn));
    }
    Check("latest record", id, 0, recNum, recNumOfModel);
    Check("number of the latest date", id, 0, number == numberOfModel, true);
}

// Queries of dates in an item that has none.
void CModelComparison::CompareNoDates(const SModelItem& item)
{
    const DWORD id = item.classID;
    IDList ids(1, UNTOUCHED);
    const VCDate* date = nullptr;
    const std::unique_ptr<VCDate> madeDate = ChooseDate(item).Make();
    IDList recs(model.GetRecCount() + 1, UNTOUCHED);
    NSKZCore::SRecordList recList{recs.data(), UNTOUCHED};
    DWORD recNum = UNTOUCHED;
    unsigned long long number = UNTOUCHED;
    Check("dates of an item without", id, 0,
          env.GetGroupedBtnIDListOfDateBtnClass(id, *madeDate, SCKZCoreCom::CMPOPERATOR_EQUAL, ids) ||
              env.GetGroupedRecListOfDateBtnClass(id, *madeDate, SCKZCoreCom::CMPOPERATOR_EQUAL, recList) ||
              env.GetLatestDateOfDateBtnClass(id, date) ||
              env.GetLatestRecNumOfDateBtnClass(id, recs.data(), 0, recNum, number),
          false);
    Check("their outputs", id, 0,
          ids != IDList{UNTOUCHED} || date != nullptr || recNum != UNTOUCHED || number != UNTOUCHED ||
              recList.recCount != UNTOUCHED,
          false);
}

void CModelComparison::CompareSums()
{
    const NSKZCore::CSumValueCacheMngr& sums = env.GetSumValueCacheMngrObjRef();
    for (DWORD left = 6; left > 0; --left) {
        const DWORD classID = ChooseClassID();
        const DWORD btnID = ChooseBtnID(classID);
        const DWORD numID = ChooseNumID();
        double ofEnv = -1;
        double ofModel = -1;
        switch (random.GetBelow(6)) {
        case 0:
            Check("has sum", classID, btnID, sums.GetSumValue(classID, btnID, numID, ofEnv),
                  model.GetSumValue(classID, btnID, numID, ofModel));
            Check("sum", classID, btnID, ofEnv, ofModel);
            break;
        case 1: {
            DWORD countOfEnv = UNTOUCHED;
            DWORD countOfModel = UNTOUCHED;
            Check("has count", classID, btnID, sums.GetCountValue(classID, btnID, numID, countOfEnv),
                  model.GetCountValue(classID, btnID, numID, countOfModel));
            Check("count", classID, btnID, countOfEnv, countOfModel);
            break;
        }
        case 2:
            Check("has average", classID, btnID, sums.GetAverageValue(classID, btnID, numID, ofEnv),
                  model.GetAverageValue(classID, btnID, numID, ofModel));
            Check("average", classID, btnID, ofEnv, ofModel);
            break;
        case 3: {
            std::vector<double> valuesOfEnv(1);
            std::vector<double> valuesOfModel(1);
            Check("has each value", classID, btnID, sums.GetEachValue(classID, btnID, numID, valuesOfEnv),
                  model.GetEachValue(classID, btnID, numID, valuesOfModel));
            Check("each value", classID, btnID, valuesOfEnv, valuesOfModel);
            break;
        }
        case 4:
            Check("has total", classID, numID, sums.GetTotalValue(classID, numID, ofEnv),
                  model.GetTotalValue(classID, numID, ofModel));
            Check("total", classID, numID, ofEnv, ofModel);
            break;
        default:
            Check("has absolute total", classID, numID, sums.GetTotalAbsoluteValue(classID, numID, ofEnv),
                  model.GetTotalAbsoluteValue(classID, numID, ofModel));
            Check("absolute total", classID, numID, ofEnv, ofModel);
        }
    }
    const DWORD numID = ChooseNumID();
    Check("can be summed", 0, numID, sums.ExistNumDataItem(numID), model.ExistNumDataItem(numID));
}

void CModelComparison::CompareUnknown()
{
    const DWORD id = UNKNOWN_CLASS_IDS[random.GetBelow(std::size(UNKNOWN_CLASS_IDS))];
    if (model.GetItems().count(id) != 0)
        return;
    DWORD count = UNTOUCHED;
    IDList ids(1, UNTOUCHED);
    unsigned int visibleInfo = UNTOUCHED;
    Check("unknown class counts", id, 0,
          env.GetBtnCountOfBtnClass(id, count) || env.GetDispBtnCountOfBtnClass(id, count) ||
              env.GetSelBtnCountOfBtnClass(id, count) || count != UNTOUCHED,
          false);
    Check("unknown class lists", id, 0,
          env.GetDispBtnIDListOfBtnClass(id, ids) || env.GetBtnNameOrdListOfBtnClass(id, 0, ids) ||
              env.GetBtnAppOrdListOfBtnClass(id, 0, ids) || ids != IDList{UNTOUCHED},
          false);
    Check("unknown class has buttons", id, 1,
          env.GetVisibleInfoOfBtn(id, 1, visibleInfo) || visibleInfo != UNTOUCHED, false);
    std::set<SBtnClassIDAndBtnID> influenced;
    bool state = false;
    const DWORD spBtnID = SCBUICoreCom::BTN_ID_INC_BEGIN;
    Check("unknown class has special buttons", id, spBtnID,
          env.GetAllSpBtnIDListOfBtnClass(id, ids, true) || env.GetIneffectiveBtnCountOfBtnClass(id, count) ||
              env.GetSystemMngrSpBtnCountOfBtnClass(id, count) ||
              env.GetSpBtnIDListIncludingBtn(id, 1, ids) ||
              env.GetRootSpBtnIDListIncludingBtn(id, 1, ids, true) ||
              env.GetSpBtnIDListThatTheSpecifiedBtnInfluences(id, 1, influenced, true) ||
              env.GetMemberBtnIDListOfSpBtn(id, spBtnID, ids) ||
              env.GetDisplayedMemberBtnIDListOfSpBtn(id, spBtnID, ids) ||
              env.GetBtnMngrInfoOfSpBtn(id, spBtnID, state) ||
              env.GetDispEmpValBtnInfoOfBtnClass(id, state) || ids != IDList{UNTOUCHED},
          false);
    Check("target records of unknown class", id, 0,
          AskRecs("GetTargetRecListOfBtnClass",
                  [&](DWORD* recs, DWORD& n) { return env.GetTargetRecListOfBtnClass(id, recs, n); }),
          ToList(model.GetTargetRecListOfBtnClass(id)));
}

} // namespace NSKZ::Test
