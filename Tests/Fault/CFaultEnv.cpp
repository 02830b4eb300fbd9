#include "CFaultEnv.h"

#include "SCDeclareConstant.h"
#include "VCBtnClass.h"

#include <sstream>
#include <stdexcept>
#include <utility>
#include <vector>

namespace NSKZ::Test {

using NSKZCore::CBUIDataMngr;
using NSKZCore::CFldValueList;
using NSKZCore::CSourceDataMngr;
using NSKZCore::SCBUICoreCom;
using NSKZCore::SCDeclareConstant;
using NSKZCore::SSelectBtnIDList;
using NSKZCore::VCBtnClass;

namespace {

constexpr DWORD REC_COUNT = 50;

std::string MakeValue(SCDeclareConstant::EDataType type, DWORD rec)
{
    const std::string digits = std::to_string(rec % 7);
    switch (type) {
    case SCDeclareConstant::DATATYPE_NUM:
        return rec % 11 == 0 ? "" : rec % 13 == 0 ? "none" : digits + ".5";
    case SCDeclareConstant::DATATYPE_DATE:
        return rec % 9 == 0 ? ""
                            : "2024-07-" + std::to_string(10 + rec % 12) + (rec % 4 == 0 ? " 01:02:03" : "");
    case SCDeclareConstant::DATATYPE_TIME:
        return rec % 10 == 3 ? "" : "1" + digits + ":00:00";
    default:
        return rec % 8 == 5 ? "" : "a value that is long enough to need memory of its own " + digits;
    }
}

CSourceDataMngr MakeTable()
{
    CSourceDataMngr table;
    for (DWORD position = 0; position < 5; ++position) {
        CSourceDataMngr::SFldInfo info;
        info.name = "item " + std::to_string(position + 1);
        info.spec.dataType = static_cast<SCDeclareConstant::EDataType>(position % 4);
        CFldValueList values;
        bool good = true;
        for (DWORD rec = 0; rec < REC_COUNT; ++rec) {
            const std::string value =
                position == 4 ? "value " + std::to_string(rec) : MakeValue(info.spec.dataType, rec);
            good = values.Append(value) && good;
        }
        DWORD fldID = 0;
        if (!good || !table.AddFld(info, std::move(values), fldID))
            throw std::logic_error("a field of the table was refused");
    }
    return table;
}

void Print(std::ostream& out, const std::vector<DWORD>& list)
{
    out << " {";
    for (const DWORD element : list)
        out << ' ' << element;
    out << " }";
}

void PrintItem(std::ostream& out, const CBUIDataMngr& env, DWORD classID)
{
    std::vector<DWORD> ids;
    DWORD btnCount = 0;
    DWORD selCount = 0;
    DWORD dispCount = 0;
    bool selected = false;
    bool selective = false;
    bool newBtnMadeSelState = false;
    unsigned int depth = 0;
    env.GetBtnCountOfBtnClass(classID, btnCount);
    env.GetSelBtnCountOfBtnClass(classID, selCount);
    env.GetDispBtnCountOfBtnClass(classID, dispCount);
    env.GetSelectionInfoOfBtnClass(classID, selected);
    env.GetBtnSelectiveStateOfBtnClass(classID, selective);
    env.GetNewBtnMadeSelStateOfBtnClass(classID, newBtnMadeSelState);
    const bool hasDepth = env.GetHierDepthOfBtnClass(classID, depth);
    out << "class " << classID << ": " << btnCount << " buttons, " << selCount << " selected, " << dispCount
        << " displayed, flags " << selected << selective << newBtnMadeSelState << ", depth " << hasDepth
        << ' ' << depth;

    env.GetSelBtnIDListOfBtnClass(classID, ids);
    Print(out, ids);
    env.GetDispBtnIDListOfBtnClass(classID, ids);
    Print(out, ids);
    for (const unsigned int flags : {VCBtnClass::ORDLIST_NORMAL, VCBtnClass::ORDLIST_INCLUDE_NONDISPBTNS}) {
        env.GetBtnAppOrdListOfBtnClass(classID, flags, ids);
        Print(out, ids);
        env.GetBtnNameOrdListOfBtnClass(classID, flags, ids);
        Print(out, ids);
    }

    std::vector<DWORD> recs(env.GetRecCountOfSrcData());
    DWORD count = 0;
    env.GetTargetRecListOfBtnClass(classID, recs.data(), count);
    recs.resize(count);
    out << "\ntarget";
    Print(out, recs);
    out << '\n';

    env.GetAllBtnIDListOfBtnClass(classID, ids, true);
    for (const DWORD btnID : ids) {
        bool sel = false;
        unsigned int visibleInfo = 0;
        const char* text = nullptr;
        double sum = 0;
        double average = 0;
        env.GetSelectionInfoOfBtn(classID, btnID, sel);
        env.GetVisibleInfoOfBtn(classID, btnID, visibleInfo);
        env.GetAliasOfBtn(classID, btnID, text);
        const bool hasSum = env.GetSumValueCacheMngrObjRef().GetSumValue(classID, btnID, FLD_NUM, sum);
        const bool hasAverage =
            env.GetSumValueCacheMngrObjRef().GetAverageValue(classID, btnID, FLD_NUM, average);
        recs.assign(env.GetRecCountOfSrcData(), 0);
        env.GetRecListThatRelatesToBtn(classID, btnID, recs.data(), count);
        recs.resize(count);
        out << btnID << " \"" << text << "\" " << sel << ' ' << visibleInfo << ' ' << hasSum << sum << ' '
            << hasAverage << average;
        Print(out, recs);
        out << '\n';
    }
    double total = 0;
    double absoluteTotal = 0;
    const bool hasTotal = env.GetSumValueCacheMngrObjRef().GetTotalValue(classID, FLD_NUM, total);
    env.GetSumValueCacheMngrObjRef().GetTotalAbsoluteValue(classID, FLD_NUM, absoluteTotal);
    out << "total " << hasTotal << total << ' ' << absoluteTotal << '\n';
}

} // namespace

const CSourceDataMngr& GetFaultTable()
{
    static const CSourceDataMngr table = MakeTable();
    return table;
}

SFaultEnv::SFaultEnv()
    : sums(GetFaultTable()), env(7, SCBUICoreCom::LINKTBLVERTYPE_ONMEM, SCBUICoreCom::LINKTBLVERTYPE_ONMEM,
                                 GetFaultTable(), &sums, nullptr)
{}

std::unique_ptr<SFaultEnv> MakeFaultEnv()
{
    return std::make_unique<SFaultEnv>();
}

std::string TakeSnapshot(const CBUIDataMngr& env)
{
    std::ostringstream out;
    const NSKZCore::INumCnd* cnd = nullptr;
    out << "mode " << env.GetRelationMode() << ", multi " << env.GetMultiSelectionInfo() << ", limited "
        << env.IsRecListLimitationExecuted() << ", condition " << env.GetNumCnd(cnd) << ", selective "
        << env.IsBtnSelectiveState() << ", target";
    std::vector<DWORD> list(env.GetRecCountOfSrcData());
    DWORD count = 0;
    env.GetTargetRecList(list.data(), count);
    list.resize(count);
    Print(out, list);
    out << "\nlevels";
    for (DWORD position = 0; position < env.GetHierCount(); ++position) {
        DWORD classID = 0;
        env.GetHierInfo(position, classID, count);
        out << ' ' << classID << ": " << count;
    }
    std::vector<SSelectBtnIDList> selection;
    env.GetAllBtnSelectionInfo(selection);
    out << "\nselection";
    for (const SSelectBtnIDList& share : selection) {
        out << ' ' << share.btnClassID << ' ' << share.newBtnMadeSelState;
        Print(out, share.btnIDList);
    }
    DWORD classID = 0;
    DWORD standardBtnID = 0;
    DWORD targetBtnID = 0;
    out << "\ndifference " << env.GetSelBtnsInfoForDiffCnd(classID, standardBtnID, targetBtnID) << ' '
        << classID << ' ' << standardBtnID << ' ' << targetBtnID << "\nselected classes";
    env.GetAllBtnClassSelectionInfo(list);
    Print(out, list);
    out << '\n';
    env.GetAllBtnClassIDList(list, true);
    for (const DWORD id : list)
        PrintItem(out, env, id);
    return out.str();
}

} // namespace NSKZ::Test
