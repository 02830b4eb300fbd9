#ifndef CSUMVALUECACHEMNGR_H
#define CSUMVALUECACHEMNGR_H

#include "CBtnWorthList.h"
#include "CSumValueCache.h"
#include "ISumValueMngr.h"

#include <array>
#include <list>
#include <map>
#include <memory>

namespace NSKZ::NSKZCore {

class CBUIDataMngr;
class CCoreSumMngr;
class VCBtnClass;

// The sums of an environment's buttons under its present selection: asked of the summation library once and
// kept until a selection changes the target records.
//
// The work areas are as long as the environment's record count and are kept, so that a query of
// one button allocates nothing in the steady state; the target records are held for one class at a time.
// Const operations change all of that: they are no more safe to run in parallel than others.
//
// Every operation that names a class makes room for its sums, for class 0 too. A query that fails leaves its
// output untouched (GetEachValue empties it) and what is kept as it was. Memory exhaustion arrives as
// std::bad_alloc.
class KZCBUIMNGR_API CSumValueCacheMngr final : public ISumValueMngr
{
public:
    // `owner` outlives the object.
    explicit CSumValueCacheMngr(const CBUIDataMngr& owner);
    // Takes over the owner and what is known, no work areas; the target records are worked out anew.
    CSumValueCacheMngr(const CSumValueCacheMngr& other);
    CSumValueCacheMngr& operator=(const CSumValueCacheMngr& other);
    using ISumValueMngr::operator=;
    ~CSumValueCacheMngr() override;

    // False without a sum manager unless the answer is kept, for class 0, and for an unknown class or button.
    bool GetSumValue(DWORD btnClassID, DWORD btnID, DWORD numID, double& value) const override;
    bool GetCountValue(DWORD btnClassID, DWORD btnID, DWORD numID, DWORD& count) const override;
    bool GetAverageValue(DWORD btnClassID, DWORD btnID, DWORD numID, double& value) const override;
    // Never kept.
    bool GetEachValue(DWORD btnClassID, DWORD btnID, DWORD numID, std::vector<double>& values) const override;
    // Both totals come from one pass over the displayed buttons, whose sums are kept by it. A sum that is NaN
    // takes no part; a button whose sum cannot be had counts once more what the button before it had.
    bool GetTotalValue(DWORD btnClassID, DWORD numID, double& value) const override;
    bool GetTotalAbsoluteValue(DWORD btnClassID, DWORD numID, double& value) const override;
    // Always false: these are there for hosts that implement the interface themselves.
    bool GetWeightedAvgValue(DWORD btnClassID, DWORD btnID, DWORD numID, double& value) const override;
    bool GetMaxValue(DWORD btnClassID, DWORD btnID, DWORD numID, double& value) const override;
    bool GetMinValue(DWORD btnClassID, DWORD btnID, DWORD numID, double& value) const override;
    bool GetLatestValue(DWORD btnClassID, DWORD btnID, DWORD numID, double& value) const override;
    bool GetAbsoluteValue(DWORD btnClassID, DWORD btnID, DWORD numID, double& value) const override;
    bool ExistNumDataItem(DWORD numID) const override;
    // Lists of sums, counts, averages and ratios. Numbers that are not known yet are asked for in as few
    // passes as possible; the last few lists are kept for as long as their numbers hold, at 16 bytes a
    // button. Null for the other methods and where a number is not to be had.
    const CBtnWorthList* GetBtnWorths(SCBUICoreCom::ESumMethodForCnd method, DWORD btnClassID,
                                      const std::vector<DWORD>& btnIDs, DWORD numID) const override;

    // Forget what is kept; to be called by the host when it changes what a numeric item holds. Of one button
    // (the totals stay); of the totals of one class or of all (the sums of buttons stay); of one numeric
    // item.
    void ClearSumValue(DWORD btnClassID, DWORD btnID);
    void ClearTotalValue(DWORD btnClassID);
    void ClearTotalValue();
    void ClearSumValueAndTotalValue(DWORD numID);
    // Forget all that is kept of one class, or of all, and the target records held for it.
    void ClearSumValueCache(DWORD btnClassID);
    void ClearSumValueCache();

private:
    friend class CBUIDataMngr;

    // Takes what another one knows in the place of what is known here; the owner stays.
    void TakeOver(CSumValueCacheMngr&& other) noexcept;

    using RecArea = std::unique_ptr<DWORD[]>;

    CSumValueCache& GetSumValueCacheObjRef(DWORD btnClassID);
    CSumValueCache& GetSumValueCacheObjConstRef(DWORD btnClassID) const;
    void BuildRecListArea() const;
    bool BuildTargetRecListOfBtnClass(DWORD btnClassID) const;
    // The class and the sum manager to ask, with the work areas and the target records of the class built;
    // false if one of them is not to be had.
    bool PrepareQuery(DWORD btnClassID, const VCBtnClass*& btnClass, const CCoreSumMngr*& coreSumMngr) const;
    // The records of the button among the target records, in the scratch list; false if the button has none
    // to give.
    bool CollectRecs(const VCBtnClass& btnClass, DWORD btnID, DWORD& count) const;
    // Both in one, for a query of one button.
    bool CollectTargetRecs(DWORD btnClassID, DWORD btnID, const CCoreSumMngr*& coreSumMngr,
                           DWORD& count) const;
    // How many of the records hold a number.
    static DWORD GetNumCount(const CCoreSumMngr& coreSumMngr, DWORD numID, const DWORD* recs, DWORD count);
    bool CalcTotalValue(DWORD btnClassID, DWORD numID) const;
    // Makes the sums (`sums`) and the counts (`counts`) of the source buttons among `btnIDs` known that are
    // not, in one pass over the target records where that is cheaper than to ask for each. What it leaves is
    // asked for one by one.
    void MakeValuesKnown(DWORD btnClassID, const std::vector<DWORD>& btnIDs, DWORD numID, bool sums,
                         bool counts) const;
    bool IsOnePassCheaper(DWORD btnClassID, const std::vector<DWORD>& btnIDs) const;

    struct SKeptWorths
    {
        DWORD btnClassID;
        SCBUICoreCom::ESumMethodForCnd method;
        DWORD numID;
        double total; // of the class, for ratios; 0 otherwise
        CBtnWorthList worths;
    };
    void DropWorths(DWORD btnClassID) const noexcept;

    const CBUIDataMngr* owner;
    mutable RecArea scratchList;
    mutable RecArea targetRecList;
    mutable std::array<RecArea, 2> mergeBuffers;
    mutable DWORD areaSize = 0; // entries of each of the four areas
    mutable DWORD currentTargetClassID = 0;
    mutable DWORD targetRecCount = 0;
    mutable std::map<DWORD, CSumValueCache> caches; // by class
    mutable std::list<SKeptWorths> keptWorths;      // the one made last in front
    mutable std::vector<DWORD> firstRecOfBtn;       // of MakeValuesKnown
};

} // namespace NSKZ::NSKZCore

#endif
