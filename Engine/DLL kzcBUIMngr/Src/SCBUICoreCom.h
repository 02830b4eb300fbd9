#ifndef SCBUICORECOM_H
#define SCBUICORECOM_H

#include "IXMLIO.h"
#include "KzcBUIMngrAPI.h"

#include <vector>

namespace NSKZ::NSKZCore {

// The vocabulary of the engine: the ranges that tell what an identifier is, and merges of identifier lists.
//
// An identifier carries no tag: environments, button classes and buttons are told apart and classified by the
// range their number lies in. Numbers of classes and of buttons overlap; only the context tells them apart.
// All bounds are inclusive, and 0 is no identifier of any kind.
class KZCBUIMNGR_API SCBUICoreCom
{
public:
    SCBUICoreCom() = delete;

    // Environments.
    static constexpr DWORD BUIDATAMNGR_ID_UNSETTING = 0;
    static constexpr DWORD BUIDATAMNGR_ID_BEGIN = 1;
    static constexpr DWORD BUIDATAMNGR_ID_END = 4294967295;
    static constexpr DWORD BUIDATAMNGR_MAXCNT = 4294967295;

    // Button classes: one for each field of the source, virtual ones that the common part of a saved
    // environment holds, virtual ones that its fixed part holds.
    static constexpr DWORD BTNCLS_ID_UNSETTING = 0;
    static constexpr DWORD BTNCLS_ID_SRC_BEGIN = 1;
    static constexpr DWORD BTNCLS_ID_SRC_END = 1000000000;
    static constexpr DWORD BTNCLS_SRC_MAXCNT = 1000000000;
    static constexpr DWORD BTNCLS_ID_VIR_COMMON_BEGIN = 1000000001;
    static constexpr DWORD BTNCLS_ID_VIR_COMMON_END = 2000000000;
    static constexpr DWORD BTNCLS_VIR_COMMON_MAXCNT = 1000000000;
    static constexpr DWORD BTNCLS_ID_VIR_FIXED_BEGIN = 2000000001;
    static constexpr DWORD BTNCLS_ID_VIR_FIXED_END = 2100000000;
    static constexpr DWORD BTNCLS_VIR_FIXED_MAXCNT = 100000000;

    // Buttons: the empty value of a source class, its other values, and the special ones. What lies between
    // and behind these ranges belongs to no kind.
    static constexpr DWORD BTN_ID_UNSETTING = 0;
    static constexpr DWORD BTN_ID_EMPVAL = 1;
    static constexpr DWORD BTN_ID_NRM_BEGIN = 2;
    static constexpr DWORD BTN_ID_NRM_END = 3000000001;
    static constexpr DWORD BTN_NRM_MAXCNT = 3000000000;
    static constexpr DWORD BTN_ID_INC_BEGIN = 4000000002;
    static constexpr DWORD BTN_ID_INC_END = 4080000001;
    static constexpr DWORD BTN_INC_MAXCNT = 80000000;
    static constexpr DWORD BTN_ID_VIRINC_BEGIN = 4080000002;
    static constexpr DWORD BTN_ID_VIRINC_END = 4160000001;
    static constexpr DWORD BTN_VIRINC_MAXCNT = 80000000;
    static constexpr DWORD BTN_ID_CLL_BEGIN = 4160000002;
    static constexpr DWORD BTN_ID_CLL_END = 4240000001;
    static constexpr DWORD BTN_CLL_MAXCNT = 80000000;

    // The enumerations are stored and saved by these values. A value that is none of them can be held and is
    // refused where it matters.
    enum EBtnType : DWORD
    {
        BTNTYPE_NORMAL = 1,
        BTNTYPE_EMPVAL = 2,
        BTNTYPE_INC = 3,
        BTNTYPE_VIRINC = 4,
        BTNTYPE_CLL = 5,
    };

    // The large value sets the virtual class apart from the source classes.
    enum EBtnClassType : DWORD
    {
        BTNCLSTYPE_NORMAL = 1,
        BTNCLSTYPE_NUM = 2,
        BTNCLSTYPE_DATE = 3,
        BTNCLSTYPE_TIME = 4,
        BTNCLSTYPE_VIR = 0x10000000,
    };

    enum ELinkTableVerType : DWORD
    {
        LINKTBLVERTYPE_ONMEM = 1,  // fast: every cell in plain memory
        LINKTBLVERTYPE_MEMSAV = 2, // small: cells in blocks
    };

    // What a button is worth to a condition. Each, SumTotal, RatioTotal and SumMultiplication are no numbers
    // of a button: a condition does not take them.
    enum class ESumMethodForCnd : DWORD
    {
        Sum = 1,
        Count = 2,
        Average = 3,
        Ratio = 4, // of the sum to the total of the class
        Each = 5,
        SumTotal = 6,
        RatioTotal = 7,
        WeightedAvg = 8,
        Max = 9,
        Min = 10,
        Latest = 11,
        Absolute = 12,
        SumMultiplication = 13,
        CountCell = 14,
    };

    // The attribute of a sum method in XML, and its words in the order of the values.
    static constexpr char STR_ATTRNAME_SUMMETHOD[] = "sumMethod";
    static constexpr DWORD STRLEN_ATTRNAME_SUMMETHOD = sizeof STR_ATTRNAME_SUMMETHOD - 1;
    static constexpr char STR_ATTRVALUE_SUMMETHOD_SUM[] = "Sum";
    static constexpr DWORD STRLEN_ATTRVALUE_SUMMETHOD_SUM = sizeof STR_ATTRVALUE_SUMMETHOD_SUM - 1;
    static constexpr char STR_ATTRVALUE_SUMMETHOD_COUNT[] = "Count";
    static constexpr DWORD STRLEN_ATTRVALUE_SUMMETHOD_COUNT = sizeof STR_ATTRVALUE_SUMMETHOD_COUNT - 1;
    static constexpr char STR_ATTRVALUE_SUMMETHOD_AVERAGE[] = "Average";
    static constexpr DWORD STRLEN_ATTRVALUE_SUMMETHOD_AVERAGE = sizeof STR_ATTRVALUE_SUMMETHOD_AVERAGE - 1;
    static constexpr char STR_ATTRVALUE_SUMMETHOD_RATIO[] = "Ratio";
    static constexpr DWORD STRLEN_ATTRVALUE_SUMMETHOD_RATIO = sizeof STR_ATTRVALUE_SUMMETHOD_RATIO - 1;
    static constexpr char STR_ATTRVALUE_SUMMETHOD_EACH[] = "Each";
    static constexpr DWORD STRLEN_ATTRVALUE_SUMMETHOD_EACH = sizeof STR_ATTRVALUE_SUMMETHOD_EACH - 1;
    static constexpr char STR_ATTRVALUE_SUMMETHOD_SUM_TOTAL[] = "SumTotal";
    static constexpr DWORD STRLEN_ATTRVALUE_SUMMETHOD_SUM_TOTAL =
        sizeof STR_ATTRVALUE_SUMMETHOD_SUM_TOTAL - 1;
    static constexpr char STR_ATTRVALUE_SUMMETHOD_RATIO_TOTAL[] = "RatioTotal";
    static constexpr DWORD STRLEN_ATTRVALUE_SUMMETHOD_RATIO_TOTAL =
        sizeof STR_ATTRVALUE_SUMMETHOD_RATIO_TOTAL - 1;
    static constexpr char STR_ATTRVALUE_SUMMETHOD_WEIGHTEDAVG[] = "WeightedAvg";
    static constexpr DWORD STRLEN_ATTRVALUE_SUMMETHOD_WEIGHTEDAVG =
        sizeof STR_ATTRVALUE_SUMMETHOD_WEIGHTEDAVG - 1;
    static constexpr char STR_ATTRVALUE_SUMMETHOD_MAX[] = "Max";
    static constexpr DWORD STRLEN_ATTRVALUE_SUMMETHOD_MAX = sizeof STR_ATTRVALUE_SUMMETHOD_MAX - 1;
    static constexpr char STR_ATTRVALUE_SUMMETHOD_MIN[] = "Min";
    static constexpr DWORD STRLEN_ATTRVALUE_SUMMETHOD_MIN = sizeof STR_ATTRVALUE_SUMMETHOD_MIN - 1;
    static constexpr char STR_ATTRVALUE_SUMMETHOD_LATEST[] = "Latest";
    static constexpr DWORD STRLEN_ATTRVALUE_SUMMETHOD_LATEST = sizeof STR_ATTRVALUE_SUMMETHOD_LATEST - 1;
    static constexpr char STR_ATTRVALUE_SUMMETHOD_ABSOLUTE[] = "Absolute";
    static constexpr DWORD STRLEN_ATTRVALUE_SUMMETHOD_ABSOLUTE = sizeof STR_ATTRVALUE_SUMMETHOD_ABSOLUTE - 1;
    static constexpr char STR_ATTRVALUE_SUMMETHOD_SUM_MULTIPLICATION[] = "SumMultiplication";
    static constexpr DWORD STRLEN_ATTRVALUE_SUMMETHOD_SUM_MULTIPLICATION =
        sizeof STR_ATTRVALUE_SUMMETHOD_SUM_MULTIPLICATION - 1;
    static constexpr char STR_ATTRVALUE_SUMMETHOD_COUNT_CELL[] = "CountCell";
    static constexpr DWORD STRLEN_ATTRVALUE_SUMMETHOD_COUNT_CELL =
        sizeof STR_ATTRVALUE_SUMMETHOD_COUNT_CELL - 1;

    // Makes `attribute` that of the sum method; its texts are constants. Throws ECAbnormalData for a value
    // that is no sum method.
    static void GetSumMethodAttribute(ESumMethodForCnd sumMethod, IXMLIO::SAttribute& attribute);
    // The sum method that an attribute tells. False, with `sumMethod` untouched, if the attribute has another
    // name or none of the words.
    static bool GetSumMethodEnum(const IXMLIO::SAttribute& attribute, ESumMethodForCnd& sumMethod) noexcept;

    // What kind of button class an identifier names.
    static constexpr bool IsSrcBtnClass(DWORD btnClassID) noexcept
    {
        return IsInRange(btnClassID, BTNCLS_ID_SRC_BEGIN, BTNCLS_ID_SRC_END);
    }
    static constexpr bool IsCommonVirBtnClass(DWORD btnClassID) noexcept
    {
        return IsInRange(btnClassID, BTNCLS_ID_VIR_COMMON_BEGIN, BTNCLS_ID_VIR_COMMON_END);
    }
    static constexpr bool IsFixedVirBtnClass(DWORD btnClassID) noexcept
    {
        return IsInRange(btnClassID, BTNCLS_ID_VIR_FIXED_BEGIN, BTNCLS_ID_VIR_FIXED_END);
    }
    static constexpr bool IsVirBtnClass(DWORD btnClassID) noexcept
    {
        return IsInRange(btnClassID, BTNCLS_ID_VIR_COMMON_BEGIN, BTNCLS_ID_VIR_FIXED_END);
    }

    // What kind of button an identifier names. Source buttons are the normal ones and the empty value;
    // special ones are inc, virtual inc and cll.
    static constexpr bool IsNormalBtn(DWORD btnID) noexcept
    {
        return IsInRange(btnID, BTN_ID_NRM_BEGIN, BTN_ID_NRM_END);
    }
    static constexpr bool IsEmpValBtn(DWORD btnID) noexcept { return btnID == BTN_ID_EMPVAL; }
    static constexpr bool IsSrcBtn(DWORD btnID) noexcept
    {
        return IsInRange(btnID, BTN_ID_EMPVAL, BTN_ID_NRM_END);
    }
    static constexpr bool IsIncBtn(DWORD btnID) noexcept
    {
        return IsInRange(btnID, BTN_ID_INC_BEGIN, BTN_ID_INC_END);
    }
    static constexpr bool IsVirIncBtn(DWORD btnID) noexcept
    {
        return IsInRange(btnID, BTN_ID_VIRINC_BEGIN, BTN_ID_VIRINC_END);
    }
    static constexpr bool IsCllBtn(DWORD btnID) noexcept
    {
        return IsInRange(btnID, BTN_ID_CLL_BEGIN, BTN_ID_CLL_END);
    }
    static constexpr bool IsSpBtn(DWORD btnID) noexcept
    {
        return IsInRange(btnID, BTN_ID_INC_BEGIN, BTN_ID_CLL_END);
    }
    // The same asked of the type: whether it is neither normal nor empty value. A value that is no type at
    // all, 0 included, counts as special here, other than an identifier of no kind above.
    static constexpr bool IsSpBtn(EBtnType type) noexcept { return static_cast<DWORD>(type) - 1 > 1; }

    // Stores the type that the identifier's range tells and returns true; false, with `type` untouched, for
    // an identifier of no kind.
    static constexpr bool GetBtnType(DWORD btnID, EBtnType& type) noexcept
    {
        if (IsNormalBtn(btnID))
            type = BTNTYPE_NORMAL;
        else if (IsCllBtn(btnID))
            type = BTNTYPE_CLL;
        else if (IsVirIncBtn(btnID))
            type = BTNTYPE_VIRINC;
        else if (IsIncBtn(btnID))
            type = BTNTYPE_INC;
        else if (IsEmpValBtn(btnID))
            type = BTNTYPE_EMPVAL;
        else
            return false;
        return true;
    }

    // List operations. Lists are ascending by unsigned value and hold no identifier twice; callers guarantee
    // it and nothing checks it. An output is a vector of its own, none of the inputs. Each returns the count
    // of the result and is linear in the lists. Only the forms with an output allocate, once a list and up
    // front: when std::bad_alloc arrives, inputs are unchanged and outputs hold anything.

    // Keeps in `btnIDList` what stands in `other` too.
    static DWORD MergeBtnIDListByANDCnd(std::vector<DWORD>& btnIDList,
                                        const std::vector<DWORD>& other) noexcept;
    // Replaces `merged` by what stands in either list.
    static DWORD MergeBtnIDListByORCnd(const std::vector<DWORD>& btnIDListA,
                                       const std::vector<DWORD>& btnIDListB, std::vector<DWORD>& merged);
    // Replaces `onlyInA` and `onlyInB` by what stands in one list alone; returns the sum of both counts.
    static DWORD MergeBtnIDListByXORCnd(const std::vector<DWORD>& btnIDListA,
                                        const std::vector<DWORD>& btnIDListB, std::vector<DWORD>& onlyInA,
                                        std::vector<DWORD>& onlyInB);
    // Takes out of `btnIDList` what stands in `deleted`.
    static DWORD DeleteBtnIDList(std::vector<DWORD>& btnIDList, const std::vector<DWORD>& deleted) noexcept;
    // The same for identifiers of classes.
    static DWORD DeleteBtnClassIDList(std::vector<DWORD>& btnClassIDList,
                                      const std::vector<DWORD>& deleted) noexcept;

private:
    // One subtraction and one comparison.
    static constexpr bool IsInRange(DWORD id, DWORD begin, DWORD end) noexcept
    {
        return id - begin <= end - begin;
    }
    // IsSrcBtn, IsSpBtn and IsVirBtnClass take neighbouring ranges as one.
    static_assert(BTN_ID_EMPVAL + 1 == BTN_ID_NRM_BEGIN);
    static_assert(BTN_ID_INC_END + 1 == BTN_ID_VIRINC_BEGIN && BTN_ID_VIRINC_END + 1 == BTN_ID_CLL_BEGIN);
    static_assert(BTNCLS_ID_VIR_COMMON_END + 1 == BTNCLS_ID_VIR_FIXED_BEGIN);
};

} // namespace NSKZ::NSKZCore

#endif
