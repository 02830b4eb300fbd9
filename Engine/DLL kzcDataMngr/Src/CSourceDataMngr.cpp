#include "CSourceDataMngr.h"

#include "SCCalendar.h"
#include "SCCodePageText.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>

namespace NSKZ::NSKZCore {

// A field never changes: what takes its place is another object.
struct CSourceDataMngr::SFld
{
    DWORD fldID;
    SFldInfo info;
    std::shared_ptr<const CFldValueList> values;

    // The same field with other values.
    CFldPtr CopyWith(CFldValueList&& others) const
    {
        auto held = std::make_shared<const CFldValueList>(std::move(others));
        return std::make_shared<const SFld>(SFld{fldID, info, std::move(held)});
    }
};

namespace {

constexpr DWORD MAX_DWORD = std::numeric_limits<DWORD>::max();

std::shared_ptr<const std::string> MakeDefEmpValName()
{
    constexpr std::string_view UTF8_NAME = "(\xE7\xA9\xBA\xE7\x99\xBD)"; // (空白)
    std::string name;
    std::size_t errorPos = 0;
    SCCodePageText::Convert(UTF8_NAME, CP_UTF8, _getmbcp(), name, errorPos);
    return std::make_shared<const std::string>(std::move(name));
}

bool IsAcceptable(const CSourceDataMngr::SFldInfo& info) noexcept
{
    return info.spec.dataKind != SCDeclareConstant::UNSETTING &&
           info.spec.dataType <= SCDeclareConstant::DATATYPE_TIME &&
           info.dateTypeInfo.form <= SCDeclareConstant::DATEFORM_LAST &&
           info.dateTypeInfo.delimiter <= SCDeclareConstant::DATEDELIM_LAST &&
           info.timeTypeInfo.form <= SCDeclareConstant::TIMEFORM_LAST &&
           info.name.find('\0') == std::string::npos;
}

bool IsSameForm(const CSourceDataMngr::SFldInfo& info, const CSourceDataMngr::SFldInfo& other) noexcept
{
    switch (info.spec.dataType) {
    case SCDeclareConstant::DATATYPE_DATE:
        return info.dateTypeInfo.form == other.dateTypeInfo.form &&
               info.dateTypeInfo.delimiter == other.dateTypeInfo.delimiter;
    case SCDeclareConstant::DATATYPE_TIME:
        return info.timeTypeInfo.form == other.timeTypeInfo.form;
    default:
        return true;
    }
}

bool IsWithin(DWORD first, DWORD count, DWORD total) noexcept
{
    return first <= total && count <= total - first;
}

} // namespace

CSourceDataMngr::CSourceDataMngr() : defEmpValName(MakeDefEmpValName()) {}

CSourceDataMngr::CSourceDataMngr(const CSourceDataMngr& other) = default;

// What is moved from stays a table, without fields, so its name for the empty value is kept.
CSourceDataMngr::CSourceDataMngr(CSourceDataMngr&& other) noexcept
    : flds(std::move(other.flds)), totalRecCount(other.totalRecCount), nextFldID(other.nextFldID),
      defEmpValName(other.defEmpValName), cutOffDate(other.cutOffDate), startMonth(other.startMonth),
      daysOfWeek(other.daysOfWeek)
{
    other.Clear();
}

CSourceDataMngr& CSourceDataMngr::operator=(const CSourceDataMngr& other)
{
    return *this = CSourceDataMngr(other);
}

CSourceDataMngr& CSourceDataMngr::operator=(CSourceDataMngr&& other) noexcept
{
    if (this != &other) {
        flds = std::move(other.flds);
        totalRecCount = other.totalRecCount;
        nextFldID = std::max(nextFldID, other.nextFldID); // none is given again
        defEmpValName = other.defEmpValName;
        cutOffDate = other.cutOffDate;
        startMonth = other.startMonth;
        daysOfWeek = other.daysOfWeek;
        other.Clear();
    }
    return *this;
}

CSourceDataMngr::~CSourceDataMngr() = default;

DWORD CSourceDataMngr::GetRecCount() const
{
    return totalRecCount;
}

DWORD CSourceDataMngr::GetFldCount() const
{
    return static_cast<DWORD>(flds.size());
}

bool CSourceDataMngr::GetSrcFrmDataFldID(std::vector<DWORD>& fldIDs) const
{
    std::vector<DWORD> inOrder;
    inOrder.reserve(flds.size());
    for (const CFldPtr& fld : flds)
        inOrder.push_back(fld->fldID);
    fldIDs.swap(inOrder);
    return true;
}

bool CSourceDataMngr::GetDataSpec(DWORD fldID, SCDeclareConstant::SDataSpec& spec) const
{
    const SFld* const fld = FindFld(fldID);
    if (fld == nullptr)
        return false;
    spec = fld->info.spec;
    return true;
}

bool CSourceDataMngr::GetDataSize(DWORD fldID, DWORD firstRec, DWORD recCount, DWORD& size32,
                                  unsigned long long& size) const
{
    const SFld* const fld = FindFld(fldID);
    if (fld == nullptr || !IsWithin(firstRec, recCount, totalRecCount))
        return false;
    size = fld->values->GetSize(firstRec, recCount);
    size32 = static_cast<DWORD>(std::min<unsigned long long>(size, MAX_DWORD));
    return true;
}

bool CSourceDataMngr::GetData(DWORD fldID, DWORD firstRec, DWORD recCount, DWORD& size32, char* buffer,
                              DWORD bufferSize, unsigned short* lengths, char** values) const
{
    const SFld* const fld = FindFld(fldID);
    if (fld == nullptr || !IsWithin(firstRec, recCount, totalRecCount))
        return false;
    const unsigned long long size = fld->values->GetSize(firstRec, recCount);
    if (size > bufferSize)
        return false;
    fld->values->Read(firstRec, recCount, buffer, lengths, values);
    size32 = static_cast<DWORD>(size);
    return true;
}

bool CSourceDataMngr::GetDateTypeInfo(DWORD fldID, SCDeclareConstant::SDateTypeInfo& info) const
{
    const SFld* const fld = FindFld(fldID);
    if (fld == nullptr || fld->info.spec.dataType != SCDeclareConstant::DATATYPE_DATE)
        return false;
    info = fld->info.dateTypeInfo;
    return true;
}

bool CSourceDataMngr::GetTimeTypeInfo(DWORD fldID, SCDeclareConstant::STimeTypeInfo& info) const
{
    const SFld* const fld = FindFld(fldID);
    if (fld == nullptr || fld->info.spec.dataType != SCDeclareConstant::DATATYPE_TIME)
        return false;
    info = fld->info.timeTypeInfo;
    return true;
}

const char* CSourceDataMngr::GetDefEmpValName() const
{
    return defEmpValName->c_str();
}

bool CSourceDataMngr::GetItemName(DWORD fldID, const char*& name) const
{
    const SFld* const fld = FindFld(fldID);
    if (fld == nullptr)
        return false;
    name = fld->info.name.c_str();
    return true;
}

DWORD CSourceDataMngr::GetCutOffDate() const
{
    return cutOffDate;
}

DWORD CSourceDataMngr::GetStartMonth() const
{
    return startMonth;
}

VCDate::EDaysOfTheWeek CSourceDataMngr::GetDaysOfTheWeek() const
{
    return daysOfWeek;
}

bool CSourceDataMngr::InsertFld(DWORD position, SFldInfo info, CFldValueList values, DWORD& fldID)
{
    if (position > flds.size() || !IsAcceptable(info) || nextFldID == MAX_DWORD ||
        (!flds.empty() && values.GetCount() != totalRecCount))
        return false;
    auto held = std::make_shared<const CFldValueList>(std::move(values));
    auto fld = std::make_shared<const SFld>(SFld{nextFldID, std::move(info), std::move(held)});
    flds.reserve(flds.size() + 1);

    totalRecCount = fld->values->GetCount();
    flds.insert(flds.begin() + static_cast<std::ptrdiff_t>(position), std::move(fld));
    fldID = nextFldID++;
    return true;
}

bool CSourceDataMngr::AddFld(SFldInfo info, CFldValueList values, DWORD& fldID)
{
    return InsertFld(GetFldCount(), std::move(info), std::move(values), fldID);
}

bool CSourceDataMngr::DeleteFld(DWORD fldID)
{
    const std::size_t pos = GetPosOfFld(fldID);
    if (pos == flds.size())
        return false;
    flds.erase(flds.begin() + static_cast<std::ptrdiff_t>(pos));
    if (flds.empty())
        totalRecCount = 0;
    return true;
}

bool CSourceDataMngr::SetFldData(DWORD fldID, CFldValueList values)
{
    const std::size_t pos = GetPosOfFld(fldID);
    if (pos == flds.size() || values.GetCount() != totalRecCount)
        return false;
    flds[pos] = flds[pos]->CopyWith(std::move(values));
    return true;
}

bool CSourceDataMngr::SetFldInfo(DWORD fldID, SFldInfo info)
{
    const std::size_t pos = GetPosOfFld(fldID);
    if (pos == flds.size() || !IsAcceptable(info))
        return false;
    flds[pos] = std::make_shared<const SFld>(SFld{fldID, std::move(info), flds[pos]->values});
    return true;
}

bool CSourceDataMngr::GetFldInfo(DWORD fldID, SFldInfo& info) const
{
    const SFld* const fld = FindFld(fldID);
    if (fld == nullptr)
        return false;
    info = SFldInfo(fld->info);
    return true;
}

bool CSourceDataMngr::GetFldIDOfName(std::string_view name, DWORD& fldID) const
{
    const auto fld = std::find_if(flds.begin(), flds.end(),
                                  [name](const CFldPtr& each) { return each->info.name == name; });
    if (fld == flds.end())
        return false;
    fldID = (*fld)->fldID;
    return true;
}

bool CSourceDataMngr::SetFldIDs(const std::vector<DWORD>& fldIDs)
{
    std::vector<DWORD> sorted(fldIDs);
    std::sort(sorted.begin(), sorted.end());
    if (sorted.size() != flds.size() ||
        (!sorted.empty() && (sorted.front() == 0 || sorted.back() == MAX_DWORD)) ||
        std::adjacent_find(sorted.begin(), sorted.end()) != sorted.end())
        return false;

    std::vector<CFldPtr> renamed;
    renamed.reserve(flds.size());
    for (std::size_t pos = 0; pos < flds.size(); ++pos)
        renamed.push_back(
            std::make_shared<const SFld>(SFld{fldIDs[pos], SFldInfo(flds[pos]->info), flds[pos]->values}));
    flds.swap(renamed);
    if (!sorted.empty())
        nextFldID = std::max(nextFldID, sorted.back() + 1);
    return true;
}

const CFldValueList* CSourceDataMngr::GetFldData(DWORD fldID) const
{
    const SFld* const fld = FindFld(fldID);
    return fld == nullptr ? nullptr : fld->values.get();
}

bool CSourceDataMngr::InsertRecs(DWORD position, std::span<const std::string_view> cells)
{
    const std::size_t fldCount = flds.size();
    if (position > totalRecCount || fldCount == 0 || cells.size() % fldCount != 0 ||
        cells.size() / fldCount > MAX_DWORD - totalRecCount)
        return false;

    std::vector<CFldPtr> changed;
    changed.reserve(fldCount);
    for (std::size_t pos = 0; pos < fldCount; ++pos) {
        CFldValueList values;
        values.AppendStretch(*flds[pos]->values, 0, position);
        for (std::size_t cell = pos; cell < cells.size(); cell += fldCount) {
            if (!values.Append(cells[cell]))
                return false;
        }
        values.AppendStretch(*flds[pos]->values, position, totalRecCount - position);
        changed.push_back(flds[pos]->CopyWith(std::move(values)));
    }
    flds.swap(changed);
    totalRecCount += static_cast<DWORD>(cells.size() / fldCount);
    return true;
}

bool CSourceDataMngr::InsertRecsByFld(DWORD position, std::span<const CFldValueList* const> values)
{
    const std::size_t fldCount = flds.size();
    if (position > totalRecCount || fldCount == 0 || values.size() != fldCount)
        return false;
    const DWORD recCount = values.front()->GetCount();
    if (recCount > MAX_DWORD - totalRecCount ||
        std::any_of(values.begin(), values.end(),
                    [recCount](const CFldValueList* each) { return each->GetCount() != recCount; }))
        return false;

    std::vector<CFldPtr> changed;
    changed.reserve(fldCount);
    for (std::size_t pos = 0; pos < fldCount; ++pos) {
        CFldValueList whole;
        whole.AppendStretch(*flds[pos]->values, 0, position);
        whole.AppendStretch(*values[pos], 0, recCount);
        whole.AppendStretch(*flds[pos]->values, position, totalRecCount - position);
        changed.push_back(flds[pos]->CopyWith(std::move(whole)));
    }
    flds.swap(changed);
    totalRecCount += recCount;
    return true;
}

bool CSourceDataMngr::DeleteRecs(DWORD firstRec, DWORD recCount)
{
    if (!IsWithin(firstRec, recCount, totalRecCount))
        return false;

    const DWORD behind = firstRec + recCount;
    std::vector<CFldPtr> changed;
    changed.reserve(flds.size());
    for (const CFldPtr& fld : flds) {
        CFldValueList values;
        values.AppendStretch(*fld->values, 0, firstRec);
        values.AppendStretch(*fld->values, behind, totalRecCount - behind);
        changed.push_back(fld->CopyWith(std::move(values)));
    }
    flds.swap(changed);
    totalRecCount -= recCount;
    return true;
}

void CSourceDataMngr::GetRenewalInfo(const CSourceDataMngr& before,
                                     SCDataMngrCoreDef::SBtnRenewalInfo& info) const
{
    SCDataMngrCoreDef::SBtnRenewalInfo made;
    made.newRecCount = totalRecCount;
    made.oldRecCount = before.totalRecCount;
    for (const CFldPtr& formerFld : before.flds) {
        if (FindFld(formerFld->fldID) == nullptr)
            made.deletedFldIDs.push_back(formerFld->fldID);
    }
    for (const CFldPtr& fld : flds) {
        const SFld* const formerFld = before.FindFld(fld->fldID);
        if (formerFld == nullptr) {
            made.insertedFldIDs.push_back(fld->fldID);
        } else if (fld->info.spec.dataKind != formerFld->info.spec.dataKind ||
                   fld->info.spec.dataType != formerFld->info.spec.dataType) {
            made.specChangedFldIDs.push_back(fld->fldID);
        } else {
            if (!IsSameForm(fld->info, formerFld->info))
                made.formChangedFldIDs.push_back(fld->fldID);
            if (!HasValuesOf(*fld, *formerFld, before.totalRecCount))
                made.dataChangedFldIDs.push_back(fld->fldID);
        }
    }
    info = std::move(made);
}

void CSourceDataMngr::SetDefEmpValName(const std::string& name)
{
    defEmpValName = std::make_shared<const std::string>(name);
}

bool CSourceDataMngr::SetCutOffDate(DWORD day) noexcept
{
    if (!SCCalendar::IsCutOffDate(day))
        return false;
    cutOffDate = day;
    return true;
}

bool CSourceDataMngr::SetStartMonth(DWORD month) noexcept
{
    if (!SCCalendar::IsMonth(month))
        return false;
    startMonth = month;
    return true;
}

bool CSourceDataMngr::SetDaysOfTheWeek(VCDate::EDaysOfTheWeek day) noexcept
{
    if (!SCCalendar::IsDaysOfTheWeek(day))
        return false;
    daysOfWeek = day;
    return true;
}

void CSourceDataMngr::Clear() noexcept
{
    flds.clear();
    totalRecCount = 0;
}

const CSourceDataMngr::SFld* CSourceDataMngr::FindFld(DWORD fldID) const noexcept
{
    const std::size_t pos = GetPosOfFld(fldID);
    return pos == flds.size() ? nullptr : flds[pos].get();
}

// Whether a field of this table has the values of `formerFld`, of a table with `formerRecCount` records,
// behind new ones or without the first ones.
bool CSourceDataMngr::HasValuesOf(const SFld& fld, const SFld& formerFld, DWORD formerRecCount) const noexcept
{
    if (fld.values == formerFld.values)
        return true;
    const DWORD kept = std::min(totalRecCount, formerRecCount);
    return fld.values->EqualsStretch(totalRecCount - kept, *formerFld.values, formerRecCount - kept, kept);
}

// The number of fields if there is no such field.
std::size_t CSourceDataMngr::GetPosOfFld(DWORD fldID) const noexcept
{
    const auto fld =
        std::find_if(flds.begin(), flds.end(), [fldID](const CFldPtr& each) { return each->fldID == fldID; });
    return static_cast<std::size_t>(fld - flds.begin());
}

} // namespace NSKZ::NSKZCore
