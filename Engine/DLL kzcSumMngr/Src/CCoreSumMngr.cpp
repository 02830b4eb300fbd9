#include "CCoreSumMngr.h"

#include "CSourceDataMngr.h"
#include "SCNumeric.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <utility>

namespace NSKZ::NSKZCore {

namespace {

constexpr double NO_NUMBER = std::numeric_limits<double>::quiet_NaN();

// A table is read in stretches of so many records, which fit one call even where every value is as long as
// can be.
constexpr DWORD STRETCH = 16384;

} // namespace

CCoreSumMngr::CCoreSumMngr(const CSourceDataMngr& table) : srcDataMngr(table) {}

CCoreSumMngr::~CCoreSumMngr() = default;

bool CCoreSumMngr::IsExistItem(DWORD fldID) const
{
    SCDeclareConstant::SDataSpec spec;
    return srcDataMngr.GetDataSpec(fldID, spec) && spec.dataType == SCDeclareConstant::DATATYPE_NUM;
}

double CCoreSumMngr::GetRecordValue(DWORD fldID, DWORD recNum) const
{
    const std::vector<double>* const numbers = GetNumbers(fldID);
    return numbers != nullptr && recNum < numbers->size() ? (*numbers)[recNum] : NO_NUMBER;
}

double CCoreSumMngr::GetSumValue(DWORD fldID, SCSMCoreCom::ENumKindOfSum kind, const DWORD* recList,
                                 DWORD recCount) const
{
    const std::vector<double>* const held = GetNumbers(fldID);
    if (held == nullptr || (recCount != 0 && recList[recCount - 1] >= held->size()))
        return NO_NUMBER;
    const double* const numbers = held->data();

    const auto sum = [=] {
        double total = 0;
        for (DWORD i = 0; i < recCount; ++i) {
            const double number = numbers[recList[i]];
            total += std::isnan(number) ? 0 : number;
        }
        return total;
    };
    const auto count = [=] {
        DWORD found = 0;
        for (DWORD i = 0; i < recCount; ++i)
            found += std::isnan(numbers[recList[i]]) ? 0 : 1;
        return static_cast<double>(found);
    };
    // The first number that no other one precedes.
    const auto findEnd = [=](auto precedes) {
        double end = NO_NUMBER;
        for (DWORD i = 0; i < recCount; ++i) {
            const double number = numbers[recList[i]];
            if (!std::isnan(number) && (std::isnan(end) || precedes(number, end)))
                end = number;
        }
        return end;
    };

    switch (kind) {
    case SCSMCoreCom::KINDOFSUM_SUM:
        return sum();
    case SCSMCoreCom::KINDOFSUM_AVG: {
        const double found = count();
        return found == 0 ? NO_NUMBER : sum() / found;
    }
    case SCSMCoreCom::KINDOFSUM_COUNT:
        return count();
    case SCSMCoreCom::KINDOFSUM_MAX:
        return findEnd([](double left, double right) { return left > right; });
    case SCSMCoreCom::KINDOFSUM_MIN:
        return findEnd([](double left, double right) { return left < right; });
    }
    return NO_NUMBER;
}

void CCoreSumMngr::Refresh() noexcept
{
    numbersOfFld.clear();
}

// Null for a field that cannot be summed.
const std::vector<double>* CCoreSumMngr::GetNumbers(DWORD fldID) const
{
    const auto held = numbersOfFld.find(fldID);
    if (held != numbersOfFld.end())
        return &held->second;
    std::vector<double> numbers;
    if (!IsExistItem(fldID) || !ReadNumbers(fldID, numbers))
        return nullptr;
    return &numbersOfFld.emplace(fldID, std::move(numbers)).first->second;
}

// False if the table does not give the field's data.
bool CCoreSumMngr::ReadNumbers(DWORD fldID, std::vector<double>& numbers) const
{
    const DWORD recCount = srcDataMngr.GetRecCount();
    numbers.assign(recCount, NO_NUMBER);
    const DWORD stretch = std::min(STRETCH, recCount);
    const auto lengths = std::make_unique_for_overwrite<unsigned short[]>(stretch);
    const auto values = std::make_unique_for_overwrite<char*[]>(stretch);
    std::vector<char> buffer;
    DWORD count = 0;
    for (DWORD first = 0; first < recCount; first += count) {
        count = std::min(STRETCH, recCount - first);
        DWORD size32 = 0;
        unsigned long long size = 0;
        if (!srcDataMngr.GetDataSize(fldID, first, count, size32, size) || size > size32)
            return false;
        if (buffer.size() < size)
            buffer.resize(size);
        if (!srcDataMngr.GetData(fldID, first, count, size32, buffer.data(), size32, lengths.get(),
                                 values.get()))
            return false;
        for (DWORD i = 0; i < count; ++i)
            SCNumeric::AtoF(values[i], numbers[first + i]);
    }
    return true;
}

} // namespace NSKZ::NSKZCore
