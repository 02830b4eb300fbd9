#include "CModelComparison.h"

#include "CSumValueCacheMngr.h"
#include "VCBtnClass.h"

#include <algorithm>
#include <cmath>

namespace NSKZ::Test {

using NSKZCore::SCBUICoreCom;
using NSKZCore::SSelectBtnIDList;
using NSKZCore::VCBtnClass;

namespace {

constexpr DWORD UNTOUCHED = 0xA5A5A5A5;

// What has no identifier: 0, gaps between the kinds, special buttons that nobody made.
constexpr DWORD UNKNOWN_BTN_IDS[] = {0,          999999,     3000000001, 3500000000, 4000000002,
                                     4080000002, 4160000002, 4240000002, 4294967295};
constexpr DWORD UNKNOWN_CLASS_IDS[] = {0, 99, 1000000000, 1000000001, 2000000001, 4294967295};

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
    return 1 + random.GetBelow(static_cast<DWORD>(model.GetItems().size()));
}

DWORD CModelComparison::ChooseBtnID(DWORD classID)
{
    const auto found = model.GetItems().find(classID);
    if (found == model.GetItems().end() || random.IsOneOf(20))
        return UNKNOWN_BTN_IDS[random.GetBelow(std::size(UNKNOWN_BTN_IDS))];
    return 1 + random.GetBelow(static_cast<DWORD>(found->second.btns.size()));
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
}

void CModelComparison::CompareItem(const SModelItem& item)
{
    const DWORD id = item.classID;
    DWORD count = 0;
    Check("GetBtnCount", id, 0, env.GetBtnCountOfBtnClass(id, count), true);
    Check("buttons", id, 0, count, static_cast<DWORD>(item.btns.size()));
    Check("GetSelBtnCount", id, 0, env.GetSelBtnCountOfBtnClass(id, count), true);
    Check("count of selected", id, 0, count, item.GetSelBtnCount());
    Check("GetDispBtnCount", id, 0, env.GetDispBtnCountOfBtnClass(id, count), true);
    Check("count of displayed", id, 0, count, static_cast<DWORD>(item.ListDisplayed().size()));

    bool state = false;
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
    Check("GetAllBtnIDList", id, 0, env.GetAllBtnIDListOfBtnClass(id, ids, random.IsOneOf(2)), true);
    Check("all buttons", id, 0, ids, item.ListAll());

    Check("target records of class", id, 0,
          AskRecs("GetTargetRecListOfBtnClass",
                  [&](DWORD* recs, DWORD& n) { return env.GetTargetRecListOfBtnClass(id, recs, n); }),
          ToList(model.GetTargetRecListOfBtnClass(id)));
    unsigned int depthOfEnv = UNTOUCHED;
    unsigned int depthOfModel = UNTOUCHED;
    Check("has depth", id, 0, env.GetHierDepthOfBtnClass(id, depthOfEnv),
          model.GetHierDepthOfBtnClass(id, depthOfModel));
    Check<DWORD>("depth", id, 0, depthOfEnv, depthOfModel);

    CompareBtns(item);
    CompareOrders(item);
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
    }

    // What seldom changes, of one button.
    const DWORD btnID = ChooseBtnID(id);
    const auto found = item.btns.find(btnID);
    const bool exists = found != item.btns.end();
    Check("exists", id, btnID, env.GetBtnExistInfoOfBtnClass(id, btnID), exists);
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
    const std::string& shown =
        std::next(item.btns.begin(), random.GetBelow(static_cast<DWORD>(item.btns.size())))
            ->second.GetShownText();
    bool isShown = false;
    for (const auto& [otherID, other] : item.btns)
        isShown = isShown || (otherID != btnID && other.GetShownText() == shown);
    Check("shows the text", id, btnID,
          env.GetBtnExistInfoOfBtnClass(id, shown.c_str(), static_cast<DWORD>(shown.size()), btnID), isShown);
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
    Check("order of appearance, flags for button", id, flags, ids, model.GetBtnAppOrdList(item, flags));
    Check("GetBtnNameOrdList", id, flags, env.GetBtnNameOrdListOfBtnClass(id, flags, ids), true);
    Check("order of names, flags for button", id, flags, ids, model.GetBtnNameOrdList(item, flags));
    if (!random.IsOneOf(3))
        return;
    IDList order;
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

    const DWORD btnID = ChooseBtnID(id);
    recs.assign(model.GetRecCount() + 1, UNTOUCHED);
    const std::optional<RecSet> ofBtn = model.GetRecsOfBtn(item, btnID);
    Check("has records of button", id, btnID, env.GetRecListThatRelatesToBtn(id, btnID, recs.data(), count),
          ofBtn.has_value());
    if (ofBtn) {
        recs.resize(std::min<std::size_t>(count, recs.size()));
        Check("records of button", id, btnID, recs, ToList(*ofBtn));
    }

    recs.clear();
    for (DWORD rec = 0; rec < model.GetRecCount(); ++rec) {
        if (random.IsOneOf(4))
            recs.push_back(rec);
    }
    IDList related(1, UNTOUCHED);
    Check("GetBtnIDListThatRelatesToRecList", id, 0,
          env.GetBtnIDListThatRelatesToRecListFromBtnClass(id, static_cast<DWORD>(recs.size()), recs.data(),
                                                           related),
          true);
    Check("buttons of records", id, 0, related, model.GetBtnsOfRecs(item, recs));
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
    Check("target records of unknown class", id, 0,
          AskRecs("GetTargetRecListOfBtnClass",
                  [&](DWORD* recs, DWORD& n) { return env.GetTargetRecListOfBtnClass(id, recs, n); }),
          ToList(model.GetTargetRecListOfBtnClass(id)));
}

} // namespace NSKZ::Test
