#ifndef CUNITCNDOFBSCBTNCND_H
#define CUNITCNDOFBSCBTNCND_H

#include "IComponentOfBscBtnCnd.h"
#include "SCBUICoreCom.h"

namespace NSKZ::NSKZCore {

// The leaf of a condition: picks buttons by what each is worth of one numeric item, either those that rank
// among the highest or lowest, or those that compare with a number.
//
// A button whose worth is NaN (an average over nothing, a ratio of nothing to nothing) is worth 0.
class KZCBUIMNGR_API CUnitCndOfBscBtnCnd final : public IComponentOfBscBtnCnd
{
public:
    // How buttons are picked. The high four bits tell the family.
    enum class ESelCondition : DWORD
    {
        Rank_High = 0x00000001,       // the N highest
        Rank_HighExcept = 0x00000002, // all but the N highest
        Rank_Low = 0x00000003,        // the N lowest
        Rank_LowExcept = 0x00000004,  // all but the N lowest
        NumCmp_Equal = 0x10000001,
        NumCmp_NotEqual = 0x10000002,
        NumCmp_Greater = 0x10000003,
        NumCmp_GreaterEqual = 0x10000004,
        NumCmp_Less = 0x10000005,
        NumCmp_LessEqual = 0x10000006,
    };
    static constexpr DWORD MASK_SELCND_TYPE = 0xF0000000;
    static constexpr DWORD FLAG_SELCND_TYPE_RANK = 0x00000000;
    static constexpr DWORD FLAG_SELCND_TYPE_NUMCMP = 0x10000000;

    // The element in XML, its attributes (beside SCBUICoreCom::STR_ATTRNAME_SUMMETHOD) and their words.
    static constexpr char STR_ELENAME_BASICUNITCONDITION[] = "BasicUnitCondition";
    static constexpr DWORD STRLEN_ELENAME_BASICUNITCONDITION = sizeof STR_ELENAME_BASICUNITCONDITION - 1;
    static constexpr char STR_ATTRNAME_NUMID[] = "numID";
    static constexpr DWORD STRLEN_ATTRNAME_NUMID = sizeof STR_ATTRNAME_NUMID - 1;
    static constexpr char STR_ATTRNAME_SELCONDITION[] = "selCondition";
    static constexpr DWORD STRLEN_ATTRNAME_SELCONDITION = sizeof STR_ATTRNAME_SELCONDITION - 1;
    static constexpr char STR_ATTRNAME_RANKNUM[] = "rankNum";
    static constexpr DWORD STRLEN_ATTRNAME_RANKNUM = sizeof STR_ATTRNAME_RANKNUM - 1;
    static constexpr char STR_ATTRNAME_CMPNUM[] = "cmpNum";
    static constexpr DWORD STRLEN_ATTRNAME_CMPNUM = sizeof STR_ATTRNAME_CMPNUM - 1;
    static constexpr char STR_ATTRVALUE_SELCONDITION_RANK_HIGH[] = "Rank_High";
    static constexpr DWORD STRLEN_ATTRVALUE_SELCONDITION_RANK_HIGH =
        sizeof STR_ATTRVALUE_SELCONDITION_RANK_HIGH - 1;
    static constexpr char STR_ATTRVALUE_SELCONDITION_RANK_HIGH_EXCEPT[] = "Rank_HighExcept";
    static constexpr DWORD STRLEN_ATTRVALUE_SELCONDITION_RANK_HIGH_EXCEPT =
        sizeof STR_ATTRVALUE_SELCONDITION_RANK_HIGH_EXCEPT - 1;
    static constexpr char STR_ATTRVALUE_SELCONDITION_RANK_LOW[] = "Rank_Low";
    static constexpr DWORD STRLEN_ATTRVALUE_SELCONDITION_RANK_LOW =
        sizeof STR_ATTRVALUE_SELCONDITION_RANK_LOW - 1;
    static constexpr char STR_ATTRVALUE_SELCONDITION_RANK_LOW_EXCEPT[] = "Rank_LowExcept";
    static constexpr DWORD STRLEN_ATTRVALUE_SELCONDITION_RANK_LOW_EXCEPT =
        sizeof STR_ATTRVALUE_SELCONDITION_RANK_LOW_EXCEPT - 1;
    static constexpr char STR_ATTRVALUE_SELCONDITION_NUMCMP_EQUAL[] = "NumCmp_Equal";
    static constexpr DWORD STRLEN_ATTRVALUE_SELCONDITION_NUMCMP_EQUAL =
        sizeof STR_ATTRVALUE_SELCONDITION_NUMCMP_EQUAL - 1;
    static constexpr char STR_ATTRVALUE_SELCONDITION_NUMCMP_NOTEQUAL[] = "NumCmp_NotEqual";
    static constexpr DWORD STRLEN_ATTRVALUE_SELCONDITION_NUMCMP_NOTEQUAL =
        sizeof STR_ATTRVALUE_SELCONDITION_NUMCMP_NOTEQUAL - 1;
    static constexpr char STR_ATTRVALUE_SELCONDITION_NUMCMP_GREATER[] = "NumCmp_Greater";
    static constexpr DWORD STRLEN_ATTRVALUE_SELCONDITION_NUMCMP_GREATER =
        sizeof STR_ATTRVALUE_SELCONDITION_NUMCMP_GREATER - 1;
    static constexpr char STR_ATTRVALUE_SELCONDITION_NUMCMP_GREATEREQUAL[] = "NumCmp_GreaterEqual";
    static constexpr DWORD STRLEN_ATTRVALUE_SELCONDITION_NUMCMP_GREATEREQUAL =
        sizeof STR_ATTRVALUE_SELCONDITION_NUMCMP_GREATEREQUAL - 1;
    static constexpr char STR_ATTRVALUE_SELCONDITION_NUMCMP_LESS[] = "NumCmp_Less";
    static constexpr DWORD STRLEN_ATTRVALUE_SELCONDITION_NUMCMP_LESS =
        sizeof STR_ATTRVALUE_SELCONDITION_NUMCMP_LESS - 1;
    static constexpr char STR_ATTRVALUE_SELCONDITION_NUMCMP_LESSEQUAL[] = "NumCmp_LessEqual";
    static constexpr DWORD STRLEN_ATTRVALUE_SELCONDITION_NUMCMP_LESSEQUAL =
        sizeof STR_ATTRVALUE_SELCONDITION_NUMCMP_LESSEQUAL - 1;

    // The highest one by the sum of item 0.
    CUnitCndOfBscBtnCnd();
    CUnitCndOfBscBtnCnd(const CUnitCndOfBscBtnCnd& other);
    CUnitCndOfBscBtnCnd& operator=(const CUnitCndOfBscBtnCnd& other);
    ~CUnitCndOfBscBtnCnd() override;

    // By rank, N being GetRankNum(): the result is in order of rank from the end that the condition names. Of
    // equal worth, those given first come first from the lowest, last from the highest. Buttons that are
    // equal (IsEqualForRank) to the N-th rank with it, so that more than N may. Where no more than N buttons
    // are given, or the item does not exist, nothing is ranked and no number asked for: Rank_High and
    // Rank_Low give all as they were given, the others none. If the sum manager refuses a number: false, and
    // no button.
    //
    // By comparison: the result is in the given order. Equal is, with NaN or an infinity on neither side,
    // what differs by less than the machine epsilon of the larger; an infinity is equal to nothing. Greater
    // and Less take the numbers as they are. Where the item does not exist no button compares: true, and
    // none. If the sum manager refuses a number: false, and those found until then.
    //
    // Throws ECAbnormalData for a selection condition or a sum method that is none, when it is needed. Memory
    // is asked for by the list, not by the button. Ranking costs a sort of the
    // buttons, or, where the sum manager keeps their ranking (GetBtnWorths), what is given out.
    bool GetBtnIDListThatAppliesToTheCnd(DWORD btnClassID, const std::vector<DWORD>& btnIDs,
                                         const ISumValueMngr& sumValueMngr,
                                         std::vector<DWORD>& result) const override;
    bool HasNumDataItem(DWORD itemID) const override;
    // One empty element with the attributes that the condition needs: the rank or the number to compare with,
    // not both. Throws ECAbnormalData, before anything is written, for a selection condition or a sum method
    // that is none.
    bool WriteSpecByXML(const char* folder, CXMLWriter& writer, bool withData) const override;
    // READXML_NOELEMENT, and nothing is changed, if the reader is on another element. READXML_BADFORMAT at
    // the first attribute that is missing or not as it should be: what comes before it stays read, the rest
    // has its default. The reader is not moved.
    CXMLReader::EMthRetOfReadXML ReadSpecByXML(const char* folder, CXMLReader& reader) override;
    IComponentOfBscBtnCnd* CreateClone() const override;

    // The numeric item that is asked for.
    DWORD GetNumID() const noexcept { return numID; }
    void SetNumID(DWORD itemID) noexcept { numID = itemID; }
    // What of it. Setting refuses the methods that are no number of a button, and only these, with false and
    // nothing changed.
    SCBUICoreCom::ESumMethodForCnd GetSumMethod() const noexcept { return sumMethod; }
    bool SetSumMethod(SCBUICoreCom::ESumMethodForCnd method) noexcept;
    // Setting takes every value.
    ESelCondition GetSelCondition() const noexcept { return selCondition; }
    void SetSelCondition(ESelCondition condition) noexcept { selCondition = condition; }
    // How many buttons rank. Setting refuses 0, with false and nothing changed.
    DWORD GetRankNum() const noexcept { return rankNum; }
    bool SetRankNum(DWORD num) noexcept;
    // What is compared with.
    double GetCmpNum() const noexcept { return cmpNum; }
    void SetCmpNum(double num) noexcept { cmpNum = num; }

    // Which family the selection condition is of.
    bool IsSelConditionByRank() const noexcept;
    bool IsSelConditionByNumCmp() const noexcept;
    static bool IsSelConditionByRank(ESelCondition condition) noexcept;
    static bool IsSelConditionByNumCmp(ESelCondition condition) noexcept;

    // Whether an element is that of this condition.
    static bool CompareElementName(const char* name, DWORD nameLen) noexcept;

    // Whether two numbers share a rank: they differ by less than the machine epsilon of the larger, are the
    // same infinity, or are both NaN.
    static bool IsEqualForRank(const double& a, const double& b) noexcept;
    static bool IsNotEqualForRank(const double& a, const double& b) noexcept;

private:
    bool GetSumValue(DWORD btnClassID, DWORD btnID, double total, const ISumValueMngr& sumValueMngr,
                     double& value) const;
    // The total that GetSumValue wants: that of the class for a ratio, 0 otherwise. False if it is refused.
    bool GetTotal(DWORD btnClassID, const ISumValueMngr& sumValueMngr, double& total) const;
    bool GetBtnIDListThatAppliesToTheRankCnd(DWORD btnClassID, const std::vector<DWORD>& btnIDs,
                                             const ISumValueMngr& sumValueMngr,
                                             std::vector<DWORD>& result) const;
    bool GetBtnIDListThatAppliesToTheNumCmpCnd(DWORD btnClassID, const std::vector<DWORD>& btnIDs,
                                               const ISumValueMngr& sumValueMngr,
                                               std::vector<DWORD>& result) const;
    bool ReadAttributes(const std::vector<IXMLIO::SAttribute>& attributes);
    bool IsMetBy(double value) const;

    DWORD numID = 0;
    SCBUICoreCom::ESumMethodForCnd sumMethod = SCBUICoreCom::ESumMethodForCnd::Sum;
    ESelCondition selCondition = ESelCondition::Rank_High;
    DWORD rankNum = 1; // never 0
    double cmpNum = 0.0;
};

} // namespace NSKZ::NSKZCore

#endif
