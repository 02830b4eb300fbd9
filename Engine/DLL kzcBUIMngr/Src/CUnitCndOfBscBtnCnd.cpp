#include "CUnitCndOfBscBtnCnd.h"

#include "CBtnWorthList.h"
#include "CXMLWriter.h"
#include "ECAbnormalData.h"
#include "ISumValueMngr.h"
#include "SCBUICoreStrDef.h"
#include "SCKZCoreCom.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <optional>

namespace NSKZ::NSKZCore {

namespace {

using ESelCondition = CUnitCndOfBscBtnCnd::ESelCondition;
using ESumMethodForCnd = SCBUICoreCom::ESumMethodForCnd;

constexpr const char* SRC_FILE = "Src/CUnitCndOfBscBtnCnd";

constexpr DWORD INTEGER_BUFFER_SIZE = 32;
constexpr DWORD DOUBLE_BUFFER_SIZE = 512;

struct SWordOfSelCondition
{
    ESelCondition condition;
    const char* text;
    DWORD len;
};

constexpr SWordOfSelCondition SELCONDITION_WORDS[] = {
    {ESelCondition::Rank_High, CUnitCndOfBscBtnCnd::STR_ATTRVALUE_SELCONDITION_RANK_HIGH,
     CUnitCndOfBscBtnCnd::STRLEN_ATTRVALUE_SELCONDITION_RANK_HIGH},
    {ESelCondition::Rank_HighExcept, CUnitCndOfBscBtnCnd::STR_ATTRVALUE_SELCONDITION_RANK_HIGH_EXCEPT,
     CUnitCndOfBscBtnCnd::STRLEN_ATTRVALUE_SELCONDITION_RANK_HIGH_EXCEPT},
    {ESelCondition::Rank_Low, CUnitCndOfBscBtnCnd::STR_ATTRVALUE_SELCONDITION_RANK_LOW,
     CUnitCndOfBscBtnCnd::STRLEN_ATTRVALUE_SELCONDITION_RANK_LOW},
    {ESelCondition::Rank_LowExcept, CUnitCndOfBscBtnCnd::STR_ATTRVALUE_SELCONDITION_RANK_LOW_EXCEPT,
     CUnitCndOfBscBtnCnd::STRLEN_ATTRVALUE_SELCONDITION_RANK_LOW_EXCEPT},
    {ESelCondition::NumCmp_Equal, CUnitCndOfBscBtnCnd::STR_ATTRVALUE_SELCONDITION_NUMCMP_EQUAL,
     CUnitCndOfBscBtnCnd::STRLEN_ATTRVALUE_SELCONDITION_NUMCMP_EQUAL},
    {ESelCondition::NumCmp_NotEqual, CUnitCndOfBscBtnCnd::STR_ATTRVALUE_SELCONDITION_NUMCMP_NOTEQUAL,
     CUnitCndOfBscBtnCnd::STRLEN_ATTRVALUE_SELCONDITION_NUMCMP_NOTEQUAL},
    {ESelCondition::NumCmp_Greater, CUnitCndOfBscBtnCnd::STR_ATTRVALUE_SELCONDITION_NUMCMP_GREATER,
     CUnitCndOfBscBtnCnd::STRLEN_ATTRVALUE_SELCONDITION_NUMCMP_GREATER},
    {ESelCondition::NumCmp_GreaterEqual, CUnitCndOfBscBtnCnd::STR_ATTRVALUE_SELCONDITION_NUMCMP_GREATEREQUAL,
     CUnitCndOfBscBtnCnd::STRLEN_ATTRVALUE_SELCONDITION_NUMCMP_GREATEREQUAL},
    {ESelCondition::NumCmp_Less, CUnitCndOfBscBtnCnd::STR_ATTRVALUE_SELCONDITION_NUMCMP_LESS,
     CUnitCndOfBscBtnCnd::STRLEN_ATTRVALUE_SELCONDITION_NUMCMP_LESS},
    {ESelCondition::NumCmp_LessEqual, CUnitCndOfBscBtnCnd::STR_ATTRVALUE_SELCONDITION_NUMCMP_LESSEQUAL,
     CUnitCndOfBscBtnCnd::STRLEN_ATTRVALUE_SELCONDITION_NUMCMP_LESSEQUAL},
};

// Null if the condition is none.
const SWordOfSelCondition* FindWord(ESelCondition condition) noexcept
{
    const auto* const found =
        std::find_if(std::begin(SELCONDITION_WORDS), std::end(SELCONDITION_WORDS),
                     [=](const SWordOfSelCondition& word) { return word.condition == condition; });
    return found == std::end(SELCONDITION_WORDS) ? nullptr : found;
}

// Null if no condition has that word.
const SWordOfSelCondition* FindWord(const IXMLIO::SAttribute& attribute) noexcept
{
    const auto* const found = std::find_if(
        std::begin(SELCONDITION_WORDS), std::end(SELCONDITION_WORDS), [&](const SWordOfSelCondition& word) {
            return IXMLIO::IsSameText(attribute.value, attribute.valueLen, word.text, word.len);
        });
    return found == std::end(SELCONDITION_WORDS) ? nullptr : found;
}

const IXMLIO::SAttribute* FindAttribute(const std::vector<IXMLIO::SAttribute>& attributes, const char* name,
                                        DWORD nameLen) noexcept
{
    DWORD index = 0;
    return CXMLReader::SearchAttribute(attributes, static_cast<DWORD>(attributes.size()), name, nameLen,
                                       index)
               ? &attributes[index]
               : nullptr;
}

// Reads a number; false if the attribute is missing or no number.
template <class TNumber>
bool ReadNumber(const std::vector<IXMLIO::SAttribute>& attributes, const char* name, DWORD nameLen,
                TNumber& number) noexcept
{
    const IXMLIO::SAttribute* const attribute = FindAttribute(attributes, name, nameLen);
    return attribute != nullptr &&
           SCKZCoreCom::ConvertStringIntoNumericValue(attribute->value, attribute->valueLen, number);
}

// Appends a number, as text in `buffer`; false with the last error if it cannot be had.
template <class TNumber, std::size_t SIZE>
bool AppendNumber(const char* name, DWORD nameLen, TNumber number, char (&buffer)[SIZE],
                  std::vector<IXMLIO::SAttribute>& attributes)
{
    DWORD length = 0;
    if (!SCKZCoreCom::ConvertNumericValueIntoString(number, buffer, static_cast<DWORD>(SIZE), length)) {
        SetLastError(ERROR_INVALID_DATA);
        return false;
    }
    attributes.push_back({name, nameLen, buffer, length});
    return true;
}

// How far two numbers lie apart, in proportion to the larger; NaN if one is NaN, and for infinities.
double GetRelativeDifference(double a, double b) noexcept
{
    const double larger = std::max(std::fabs(a), std::fabs(b));
    return larger != 0.0 ? std::fabs(a - b) / larger : 0.0;
}

bool IsEqualForNumCmp(double a, double b) noexcept
{
    return !std::isnan(a) && !std::isnan(b) &&
           GetRelativeDifference(a, b) < std::numeric_limits<double>::epsilon();
}

bool IsFromTheHighest(ESelCondition condition) noexcept
{
    return condition == ESelCondition::Rank_High || condition == ESelCondition::Rank_HighExcept;
}

} // namespace

CUnitCndOfBscBtnCnd::CUnitCndOfBscBtnCnd() = default;
CUnitCndOfBscBtnCnd::CUnitCndOfBscBtnCnd(const CUnitCndOfBscBtnCnd& other) = default;
CUnitCndOfBscBtnCnd& CUnitCndOfBscBtnCnd::operator=(const CUnitCndOfBscBtnCnd& other) = default;
CUnitCndOfBscBtnCnd::~CUnitCndOfBscBtnCnd() = default;

// --- Evaluation

bool CUnitCndOfBscBtnCnd::GetBtnIDListThatAppliesToTheCnd(DWORD btnClassID, const std::vector<DWORD>& btnIDs,
                                                          const ISumValueMngr& sumValueMngr,
                                                          std::vector<DWORD>& result) const
{
    result.clear();
    return IsSelConditionByRank()
               ? GetBtnIDListThatAppliesToTheRankCnd(btnClassID, btnIDs, sumValueMngr, result)
               : GetBtnIDListThatAppliesToTheNumCmpCnd(btnClassID, btnIDs, sumValueMngr, result);
}

bool CUnitCndOfBscBtnCnd::GetSumValue(DWORD btnClassID, DWORD btnID, double total,
                                      const ISumValueMngr& sumValueMngr, double& value) const
{
    bool answered = false;
    switch (sumMethod) {
    case ESumMethodForCnd::Sum:
        answered = sumValueMngr.GetSumValue(btnClassID, btnID, numID, value);
        break;
    case ESumMethodForCnd::Count: {
        DWORD count = 0;
        answered = sumValueMngr.GetCountValue(btnClassID, btnID, numID, count);
        if (answered)
            value = count;
        break;
    }
    case ESumMethodForCnd::Average:
        answered = sumValueMngr.GetAverageValue(btnClassID, btnID, numID, value);
        break;
    case ESumMethodForCnd::Ratio: {
        double sum = 0.0;
        answered = sumValueMngr.GetSumValue(btnClassID, btnID, numID, sum);
        if (answered)
            value = sum / total; // a total of 0 gives an infinity or NaN
        break;
    }
    case ESumMethodForCnd::WeightedAvg:
        answered = sumValueMngr.GetWeightedAvgValue(btnClassID, btnID, numID, value);
        break;
    case ESumMethodForCnd::Max:
        answered = sumValueMngr.GetMaxValue(btnClassID, btnID, numID, value);
        break;
    case ESumMethodForCnd::Min:
        answered = sumValueMngr.GetMinValue(btnClassID, btnID, numID, value);
        break;
    case ESumMethodForCnd::Latest:
        answered = sumValueMngr.GetLatestValue(btnClassID, btnID, numID, value);
        break;
    case ESumMethodForCnd::Absolute:
        answered = sumValueMngr.GetAbsoluteValue(btnClassID, btnID, numID, value);
        break;
    case ESumMethodForCnd::Each:
    case ESumMethodForCnd::SumTotal:
    case ESumMethodForCnd::RatioTotal:
    case ESumMethodForCnd::SumMultiplication:
    case ESumMethodForCnd::CountCell:
        return false;
    default:
        throw ECAbnormalData(SCBUICoreStrDef::MSG_UNKNOWN_SUMMETHOD_FORCND, SRC_FILE,
                             "NSKZ::NSKZCore::CUnitCndOfBscBtnCnd::GetSumValue", 535);
    }
    if (answered && std::isnan(value))
        value = 0.0;
    return answered;
}

bool CUnitCndOfBscBtnCnd::GetTotal(DWORD btnClassID, const ISumValueMngr& sumValueMngr, double& total) const
{
    total = 0.0;
    return sumMethod != ESumMethodForCnd::Ratio || sumValueMngr.GetTotalValue(btnClassID, numID, total);
}

bool CUnitCndOfBscBtnCnd::GetBtnIDListThatAppliesToTheRankCnd(DWORD btnClassID,
                                                              const std::vector<DWORD>& btnIDs,
                                                              const ISumValueMngr& sumValueMngr,
                                                              std::vector<DWORD>& result) const
{
    constexpr const char* FUNC = "NSKZ::NSKZCore::CUnitCndOfBscBtnCnd::GetBtnIDListThatAppliesToTheRankCnd";
    const bool isKnown = FindWord(selCondition) != nullptr;
    const bool isExcept =
        selCondition == ESelCondition::Rank_HighExcept || selCondition == ESelCondition::Rank_LowExcept;
    if (!sumValueMngr.ExistNumDataItem(numID) || btnIDs.size() <= rankNum) {
        if (!isKnown)
            throw ECAbnormalData(SCBUICoreStrDef::MSG_UNKNOWN_MMBBTNSELCND, SRC_FILE, FUNC, 289);
        if (!isExcept)
            result = btnIDs;
        return true;
    }

    double total = 0.0;
    if (!GetTotal(btnClassID, sumValueMngr, total))
        return false;
    std::optional<CBtnWorthList> asked;
    const CBtnWorthList* worths = sumValueMngr.GetBtnWorths(sumMethod, btnClassID, btnIDs, numID);
    if (worths == nullptr) {
        asked.emplace(btnIDs);
        for (const DWORD btnID : btnIDs) {
            double value = 0.0;
            if (!GetSumValue(btnClassID, btnID, total, sumValueMngr, value))
                return false;
            asked->Add(value);
        }
        worths = &*asked;
    }
    if (!isKnown)
        throw ECAbnormalData(SCBUICoreStrDef::MSG_UNKNOWN_MMBBTNSELCND, SRC_FILE, FUNC, 255);

    const std::vector<DWORD>& ranking = worths->GetRanking();
    const bool fromTheHighest = IsFromTheHighest(selCondition);
    const auto getPosition = [&](std::size_t place) { // places count from the end that the condition names
        return ranking[fromTheHighest ? ranking.size() - 1 - place : place];
    };
    const std::vector<double>& worthOf = worths->GetWorths();
    const double boundary = worthOf[getPosition(rankNum - 1)];
    std::size_t rankedEnd = rankNum;
    while (rankedEnd < ranking.size() && IsEqualForRank(boundary, worthOf[getPosition(rankedEnd)]))
        ++rankedEnd;
    const std::size_t begin = isExcept ? rankedEnd : 0;
    const std::size_t end = isExcept ? ranking.size() : rankedEnd;
    result.reserve(end - begin);
    for (std::size_t place = begin; place < end; ++place)
        result.push_back(btnIDs[getPosition(place)]);
    return true;
}

bool CUnitCndOfBscBtnCnd::GetBtnIDListThatAppliesToTheNumCmpCnd(DWORD btnClassID,
                                                                const std::vector<DWORD>& btnIDs,
                                                                const ISumValueMngr& sumValueMngr,
                                                                std::vector<DWORD>& result) const
{
    if (!sumValueMngr.ExistNumDataItem(numID))
        return true;
    double total = 0.0;
    if (!GetTotal(btnClassID, sumValueMngr, total))
        return false;
    const CBtnWorthList* const worths = sumValueMngr.GetBtnWorths(sumMethod, btnClassID, btnIDs, numID);
    for (std::size_t position = 0; position < btnIDs.size(); ++position) {
        double value = 0.0;
        if (worths != nullptr)
            value = worths->GetWorths()[position];
        else if (!GetSumValue(btnClassID, btnIDs[position], total, sumValueMngr, value))
            return false;
        if (IsMetBy(value))
            result.push_back(btnIDs[position]);
    }
    return true;
}

bool CUnitCndOfBscBtnCnd::IsMetBy(double value) const
{
    switch (selCondition) {
    case ESelCondition::NumCmp_Equal:
        return IsEqualForNumCmp(value, cmpNum);
    case ESelCondition::NumCmp_NotEqual:
        return !IsEqualForNumCmp(value, cmpNum);
    case ESelCondition::NumCmp_Greater:
        return value > cmpNum;
    case ESelCondition::NumCmp_GreaterEqual:
        return value > cmpNum || IsEqualForNumCmp(value, cmpNum);
    case ESelCondition::NumCmp_Less:
        return cmpNum > value;
    case ESelCondition::NumCmp_LessEqual:
        return cmpNum > value || IsEqualForNumCmp(value, cmpNum);
    default:
        throw ECAbnormalData(SCBUICoreStrDef::MSG_UNKNOWN_MMBBTNSELCND, SRC_FILE,
                             "NSKZ::NSKZCore::CUnitCndOfBscBtnCnd::GetBtnIDListThatAppliesToTheNumCmpCnd",
                             410);
    }
}

bool CUnitCndOfBscBtnCnd::IsEqualForRank(const double& a, const double& b) noexcept
{
    if (std::isnan(a) && std::isnan(b))
        return true;
    if (!std::isfinite(a) && !std::isfinite(b))
        return (a > 0 && b > 0) || (a < 0 && b < 0);
    if (std::isnan(a) || std::isnan(b))
        return false;
    return GetRelativeDifference(a, b) < std::numeric_limits<double>::epsilon();
}

bool CUnitCndOfBscBtnCnd::IsNotEqualForRank(const double& a, const double& b) noexcept
{
    return !IsEqualForRank(a, b);
}

bool CUnitCndOfBscBtnCnd::HasNumDataItem(DWORD itemID) const
{
    return itemID == numID;
}

IComponentOfBscBtnCnd* CUnitCndOfBscBtnCnd::CreateClone() const
{
    return new CUnitCndOfBscBtnCnd(*this);
}

// --- Fields

bool CUnitCndOfBscBtnCnd::SetSumMethod(ESumMethodForCnd method) noexcept
{
    if (method == ESumMethodForCnd::Each || method == ESumMethodForCnd::SumTotal ||
        method == ESumMethodForCnd::RatioTotal || method == ESumMethodForCnd::SumMultiplication)
        return false;
    sumMethod = method;
    return true;
}

bool CUnitCndOfBscBtnCnd::SetRankNum(DWORD num) noexcept
{
    if (num == 0)
        return false;
    rankNum = num;
    return true;
}

bool CUnitCndOfBscBtnCnd::IsSelConditionByRank() const noexcept
{
    return static_cast<DWORD>(selCondition) < FLAG_SELCND_TYPE_NUMCMP;
}

bool CUnitCndOfBscBtnCnd::IsSelConditionByNumCmp() const noexcept
{
    return IsSelConditionByNumCmp(selCondition);
}

bool CUnitCndOfBscBtnCnd::IsSelConditionByRank(ESelCondition condition) noexcept
{
    return (static_cast<DWORD>(condition) & MASK_SELCND_TYPE) == FLAG_SELCND_TYPE_RANK;
}

bool CUnitCndOfBscBtnCnd::IsSelConditionByNumCmp(ESelCondition condition) noexcept
{
    return (static_cast<DWORD>(condition) & MASK_SELCND_TYPE) == FLAG_SELCND_TYPE_NUMCMP;
}

// --- XML

bool CUnitCndOfBscBtnCnd::WriteSpecByXML(const char*, CXMLWriter& writer, bool) const
{
    std::vector<IXMLIO::SAttribute> attributes;
    char numIDText[INTEGER_BUFFER_SIZE];
    if (!AppendNumber(STR_ATTRNAME_NUMID, STRLEN_ATTRNAME_NUMID, numID, numIDText, attributes))
        return false;
    SCBUICoreCom::GetSumMethodAttribute(sumMethod, attributes.emplace_back());
    const SWordOfSelCondition* const word = FindWord(selCondition);
    if (word == nullptr)
        throw ECAbnormalData(SCBUICoreStrDef::MSG_UNKNOWN_SELCONDITION, SRC_FILE,
                             "NSKZ::NSKZCore::CUnitCndOfBscBtnCnd::WriteSpecByXML", 585);
    attributes.push_back({STR_ATTRNAME_SELCONDITION, STRLEN_ATTRNAME_SELCONDITION, word->text, word->len});
    char rankNumText[INTEGER_BUFFER_SIZE];
    char cmpNumText[DOUBLE_BUFFER_SIZE];
    const bool appended =
        IsSelConditionByRank()
            ? AppendNumber(STR_ATTRNAME_RANKNUM, STRLEN_ATTRNAME_RANKNUM, rankNum, rankNumText, attributes)
            : AppendNumber(STR_ATTRNAME_CMPNUM, STRLEN_ATTRNAME_CMPNUM, cmpNum, cmpNumText, attributes);
    return appended && writer.PutEmptyElement(STR_ELENAME_BASICUNITCONDITION,
                                              STRLEN_ELENAME_BASICUNITCONDITION, attributes);
}

CXMLReader::EMthRetOfReadXML CUnitCndOfBscBtnCnd::ReadSpecByXML(const char*, CXMLReader& reader)
{
    const char* name = nullptr;
    DWORD nameLen = 0;
    if (!reader.GetCurrentElementName(name, nameLen) || !CompareElementName(name, nameLen))
        return CXMLReader::READXML_NOELEMENT;
    *this = CUnitCndOfBscBtnCnd();
    return ReadAttributes(reader.GetAttributes()) ? CXMLReader::READXML_OK : CXMLReader::READXML_BADFORMAT;
}

// The setters keep out of the fields what these must not hold.
bool CUnitCndOfBscBtnCnd::ReadAttributes(const std::vector<IXMLIO::SAttribute>& attributes)
{
    if (!ReadNumber(attributes, STR_ATTRNAME_NUMID, STRLEN_ATTRNAME_NUMID, numID))
        return false;
    const IXMLIO::SAttribute* const methodAttribute = FindAttribute(
        attributes, SCBUICoreCom::STR_ATTRNAME_SUMMETHOD, SCBUICoreCom::STRLEN_ATTRNAME_SUMMETHOD);
    ESumMethodForCnd method = sumMethod;
    if (methodAttribute == nullptr || !SCBUICoreCom::GetSumMethodEnum(*methodAttribute, method) ||
        !SetSumMethod(method))
        return false;
    const IXMLIO::SAttribute* const conditionAttribute =
        FindAttribute(attributes, STR_ATTRNAME_SELCONDITION, STRLEN_ATTRNAME_SELCONDITION);
    const SWordOfSelCondition* const word =
        conditionAttribute == nullptr ? nullptr : FindWord(*conditionAttribute);
    if (word == nullptr)
        return false;
    selCondition = word->condition;
    if (!IsSelConditionByRank())
        return ReadNumber(attributes, STR_ATTRNAME_CMPNUM, STRLEN_ATTRNAME_CMPNUM, cmpNum);
    DWORD num = 0;
    return ReadNumber(attributes, STR_ATTRNAME_RANKNUM, STRLEN_ATTRNAME_RANKNUM, num) && SetRankNum(num);
}

bool CUnitCndOfBscBtnCnd::CompareElementName(const char* name, DWORD nameLen) noexcept
{
    return IXMLIO::IsSameText(name, nameLen, STR_ELENAME_BASICUNITCONDITION,
                              STRLEN_ELENAME_BASICUNITCONDITION);
}

} // namespace NSKZ::NSKZCore
