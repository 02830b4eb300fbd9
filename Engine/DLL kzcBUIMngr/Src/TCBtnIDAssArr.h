#ifndef TCBTNIDASSARR_H
#define TCBTNIDASSARR_H

#include "ECAbnormalData.h"
#include "SCBUICoreCom.h"
#include "SCBUICoreStrDef.h"

#include <algorithm>
#include <concepts>
#include <string>
#include <vector>

namespace NSKZ::NSKZCore {

// A value type that tells by itself where there is no value: T::MakeAbsent() gives what stands for none.
template <class T>
concept CTellsAbsence = requires(const T& value)
{
    {
        T::MakeAbsent()
        } -> std::same_as<T>;
    {
        value.IsAbsent()
        } -> std::same_as<bool>;
};

// The place of one key in the array below. Where the value tells it, no flag is needed beside.
template <class T>
struct TCBtnIDSlot
{
    bool IsPresent() const noexcept { return present; }
    void Remove() noexcept { present = false; }
    void Put(const T& newValue) noexcept
    {
        present = true;
        value = newValue;
    }

    bool present = false;
    T value{};
};
template <CTellsAbsence T>
struct TCBtnIDSlot<T>
{
    bool IsPresent() const noexcept { return !value.IsAbsent(); }
    void Remove() noexcept { value = T::MakeAbsent(); }
    void Put(const T& newValue) noexcept { value = newValue; }

    T value = T::MakeAbsent();
};

// Maps button identifiers to values of T through plain arrays: a look-up is a range test and an index, no
// search and no hash. It stands on the hot paths of the relation.
//
// The price is memory: the store of a kind of button is as long as the largest key of that kind it has held.
// Clear keeps what was allocated, so that one array used again and again allocates nothing. T is copied
// without throwing. Where T tells absence, the value that stands for none is never set.
//
// An operation that throws std::bad_alloc has changed nothing.
template <class T>
class TCBtnIDAssArr
{
    using EBtnType = SCBUICoreCom::EBtnType;

    using SSlot = TCBtnIDSlot<T>;

public:
    // Walks the entries: the empty value first, then normal, inc, cll and virtual inc buttons, each by
    // ascending identifier. It stays valid while the array lives; entries set or removed meanwhile are met or
    // not by where they stand.
    class CConstIterator
    {
    public:
        // Stands at a slot of the store of a type, or behind its last one. Nothing is proved here.
        CConstIterator(const TCBtnIDAssArr& arr, EBtnType btnType, DWORD index) noexcept
            : array(&arr), type(btnType), pos(index)
        {}

        // Goes on to the next entry, or to the end; at the end it stays. Throws ECAbnormalData
        // (MSG_UNKNOWN_BTNTYPE) when it stands in a type that is none.
        CConstIterator& operator++()
        {
            if (pos < array->GetStoreSize(type, "operator ++"))
                ++pos;
            SkipAbsentSlots();
            return *this;
        }

        // The identifier of the button it stands at. Throws as above.
        DWORD GetKey() const
        {
            switch (type) {
            case SCBUICoreCom::BTNTYPE_NORMAL:
                return pos + SCBUICoreCom::BTN_ID_NRM_BEGIN;
            case SCBUICoreCom::BTNTYPE_EMPVAL:
                return SCBUICoreCom::BTN_ID_EMPVAL;
            case SCBUICoreCom::BTNTYPE_INC:
                return pos + SCBUICoreCom::BTN_ID_INC_BEGIN;
            case SCBUICoreCom::BTNTYPE_VIRINC:
                return pos + SCBUICoreCom::BTN_ID_VIRINC_BEGIN;
            case SCBUICoreCom::BTNTYPE_CLL:
                return pos + SCBUICoreCom::BTN_ID_CLL_BEGIN;
            }
            ThrowUnknownBtnType("GetKey");
        }

        // The value it stands at; it must not stand at the end.
        const T& operator*() const { return array->GetStore(type, "operator *")[pos].value; }
        const T* operator->() const { return &**this; }

        friend bool operator==(const CConstIterator& left, const CConstIterator& right) noexcept
        {
            return left.array == right.array && left.type == right.type && left.pos == right.pos;
        }

    private:
        friend class TCBtnIDAssArr;

        // Moves forward from an absent slot, store by store, until it stands at an entry or at the end.
        void SkipAbsentSlots()
        {
            for (;;) {
                const SSlot* const store = array->GetStore(type, "operator ++");
                const DWORD size = array->GetStoreSize(type, "operator ++");
                while (pos < size && !store[pos].IsPresent())
                    ++pos;
                if (pos < size || type == SCBUICoreCom::BTNTYPE_VIRINC)
                    return;
                type = GetNextType(type);
                pos = 0;
            }
        }

        static EBtnType GetNextType(EBtnType btnType) noexcept
        {
            switch (btnType) {
            case SCBUICoreCom::BTNTYPE_EMPVAL:
                return SCBUICoreCom::BTNTYPE_NORMAL;
            case SCBUICoreCom::BTNTYPE_NORMAL:
                return SCBUICoreCom::BTNTYPE_INC;
            case SCBUICoreCom::BTNTYPE_INC:
                return SCBUICoreCom::BTNTYPE_CLL;
            default:
                return SCBUICoreCom::BTNTYPE_VIRINC;
            }
        }

        const TCBtnIDAssArr* array;
        EBtnType type;
        DWORD pos;
    };

    // The first entry, and the position behind the last. begin() costs the absent slots before the first
    // entry.
    CConstIterator begin() const
    {
        CConstIterator first(*this, SCBUICoreCom::BTNTYPE_EMPVAL, 0);
        first.SkipAbsentSlots();
        return first;
    }
    CConstIterator end() const noexcept
    {
        return CConstIterator(*this, SCBUICoreCom::BTNTYPE_VIRINC, static_cast<DWORD>(virIncSlots.size()));
    }

    // How many entries there are.
    DWORD GetSize() const noexcept { return entryCount; }

    // Removes all entries and keeps the memory.
    void Clear() noexcept
    {
        nrmSlots.clear();
        incSlots.clear();
        cllSlots.clear();
        virIncSlots.clear();
        empValSlot.Remove();
        entryCount = 0;
    }

    // Sets the value of a key, whether it has an entry or not. False for a key that is no button.
    bool Set(DWORD btnID, const T& value)
    {
        const T copy = value; // `value` may stand in the store that moves
        if (!MakeRoom(btnID))
            return false;
        Store(*FindSlot(*this, btnID), copy);
        return true;
    }

    // Set for source buttons only: false for a key that is neither the empty value nor a normal button.
    bool SetOfSrcBtn(DWORD btnID, const T& value)
    {
        return SCBUICoreCom::IsSrcBtn(btnID) && Set(btnID, value);
    }

    // Sees to it that a Set of the key that follows cannot run out of memory. False for a key that is no
    // button.
    bool MakeRoom(DWORD btnID)
    {
        if (SCBUICoreCom::IsNormalBtn(btnID))
            ExtendTo(nrmSlots, btnID - SCBUICoreCom::BTN_ID_NRM_BEGIN);
        else if (SCBUICoreCom::IsIncBtn(btnID))
            ExtendTo(incSlots, btnID - SCBUICoreCom::BTN_ID_INC_BEGIN);
        else if (SCBUICoreCom::IsVirIncBtn(btnID))
            ExtendTo(virIncSlots, btnID - SCBUICoreCom::BTN_ID_VIRINC_BEGIN);
        else if (SCBUICoreCom::IsCllBtn(btnID))
            ExtendTo(cllSlots, btnID - SCBUICoreCom::BTN_ID_CLL_BEGIN);
        else
            return SCBUICoreCom::IsEmpValBtn(btnID);
        return true;
    }

    // Takes at once, and no more than it needs, the room for all keys that another array has room for.
    template <class TOther>
    void MakeRoomFor(const TCBtnIDAssArr<TOther>& other)
    {
        const auto extend = [](std::vector<SSlot>& slots, const auto& otherSlots) {
            if (slots.size() < otherSlots.size())
                slots.resize(otherSlots.size());
        };
        extend(nrmSlots, other.nrmSlots);
        extend(incSlots, other.incSlots);
        extend(virIncSlots, other.virIncSlots);
        extend(cllSlots, other.cllSlots);
    }

    // Stores the value of a key and returns true; false, with `value` untouched, when it has no entry.
    bool Get(DWORD btnID, T& value) const noexcept
    {
        const T* const found = Find(btnID);
        if (found == nullptr)
            return false;
        value = *found;
        return true;
    }

    // The value of a key in its place, to be read or changed there; null when it has no entry. A Set,
    // MakeRoom or Clear ends its life.
    const T* Find(DWORD btnID) const noexcept
    {
        const SSlot* const slot = FindSlot(*this, btnID);
        return slot != nullptr && slot->IsPresent() ? &slot->value : nullptr;
    }
    T* Find(DWORD btnID) noexcept
    {
        SSlot* const slot = FindSlot(*this, btnID);
        return slot != nullptr && slot->IsPresent() ? &slot->value : nullptr;
    }

    // Whether a key has an entry.
    bool Exist(DWORD btnID) const noexcept { return Find(btnID) != nullptr; }

    // Whether a button of a type has an entry; false for a value that is no type. Linear in the largest key.
    bool ExistOfType(EBtnType type) const noexcept
    {
        const auto holdsEntry = [](const std::vector<SSlot>& slots) {
            return std::any_of(slots.begin(), slots.end(),
                               [](const SSlot& slot) { return slot.IsPresent(); });
        };
        switch (type) {
        case SCBUICoreCom::BTNTYPE_NORMAL:
            return holdsEntry(nrmSlots);
        case SCBUICoreCom::BTNTYPE_EMPVAL:
            return empValSlot.IsPresent();
        case SCBUICoreCom::BTNTYPE_INC:
            return holdsEntry(incSlots);
        case SCBUICoreCom::BTNTYPE_VIRINC:
            return holdsEntry(virIncSlots);
        case SCBUICoreCom::BTNTYPE_CLL:
            return holdsEntry(cllSlots);
        }
        return false;
    }

    // Removes the entry of a key and keeps the memory. False when it has none.
    bool Remove(DWORD btnID) noexcept
    {
        SSlot* const slot = FindSlot(*this, btnID);
        if (slot == nullptr || !slot->IsPresent())
            return false;
        slot->Remove();
        --entryCount;
        return true;
    }

    // Calls visit(btnID, value) for every entry in the order of the iterator, the value being the one in its
    // place. The visit may Remove the entry it is given; other changes of the array it may not make.
    template <class TVisit>
    void ForEach(TVisit&& visit)
    {
        VisitAll(*this, visit);
    }
    template <class TVisit>
    void ForEach(TVisit&& visit) const
    {
        VisitAll(*this, visit);
    }

private:
    template <class TOther>
    friend class TCBtnIDAssArr;

    template <class TArr, class TVisit>
    static void VisitAll(TArr& arr, TVisit& visit)
    {
        if (arr.empValSlot.IsPresent())
            visit(SCBUICoreCom::BTN_ID_EMPVAL, arr.empValSlot.value);
        VisitStore(arr.nrmSlots, SCBUICoreCom::BTN_ID_NRM_BEGIN, visit);
        VisitStore(arr.incSlots, SCBUICoreCom::BTN_ID_INC_BEGIN, visit);
        VisitStore(arr.cllSlots, SCBUICoreCom::BTN_ID_CLL_BEGIN, visit);
        VisitStore(arr.virIncSlots, SCBUICoreCom::BTN_ID_VIRINC_BEGIN, visit);
    }
    template <class TSlots, class TVisit>
    static void VisitStore(TSlots& slots, DWORD firstBtnID, TVisit& visit)
    {
        DWORD btnID = firstBtnID;
        for (auto& slot : slots) {
            if (slot.IsPresent())
                visit(btnID, slot.value);
            ++btnID;
        }
    }

    static void ExtendTo(std::vector<SSlot>& slots, DWORD index)
    {
        if (index >= slots.size())
            slots.resize(static_cast<std::size_t>(index) + 1);
    }

    void Store(SSlot& slot, const T& value) noexcept
    {
        if (!slot.IsPresent())
            ++entryCount;
        slot.Put(value);
    }

    // The slot of a key, present or not; null when the key is no button or past the end of its store. The
    // most frequent kinds come first.
    template <class TArr>
    static auto FindSlot(TArr& arr, DWORD btnID) noexcept -> decltype(&arr.empValSlot)
    {
        if (SCBUICoreCom::IsNormalBtn(btnID))
            return At(arr.nrmSlots, btnID - SCBUICoreCom::BTN_ID_NRM_BEGIN);
        if (SCBUICoreCom::IsEmpValBtn(btnID))
            return &arr.empValSlot;
        if (SCBUICoreCom::IsIncBtn(btnID))
            return At(arr.incSlots, btnID - SCBUICoreCom::BTN_ID_INC_BEGIN);
        if (SCBUICoreCom::IsCllBtn(btnID))
            return At(arr.cllSlots, btnID - SCBUICoreCom::BTN_ID_CLL_BEGIN);
        if (SCBUICoreCom::IsVirIncBtn(btnID))
            return At(arr.virIncSlots, btnID - SCBUICoreCom::BTN_ID_VIRINC_BEGIN);
        return nullptr;
    }
    template <class TSlots>
    static auto At(TSlots& slots, DWORD index) noexcept -> decltype(slots.data())
    {
        return index < slots.size() ? slots.data() + index : nullptr;
    }

    // The store of a type; `operation` is the operation of the iterator that asks.
    const SSlot* GetStore(EBtnType type, const char* operation) const
    {
        switch (type) {
        case SCBUICoreCom::BTNTYPE_NORMAL:
            return nrmSlots.data();
        case SCBUICoreCom::BTNTYPE_EMPVAL:
            return &empValSlot;
        case SCBUICoreCom::BTNTYPE_INC:
            return incSlots.data();
        case SCBUICoreCom::BTNTYPE_VIRINC:
            return virIncSlots.data();
        case SCBUICoreCom::BTNTYPE_CLL:
            return cllSlots.data();
        }
        ThrowUnknownBtnType(operation);
    }
    DWORD GetStoreSize(EBtnType type, const char* operation) const
    {
        switch (type) {
        case SCBUICoreCom::BTNTYPE_NORMAL:
            return static_cast<DWORD>(nrmSlots.size());
        case SCBUICoreCom::BTNTYPE_EMPVAL:
            return 1;
        case SCBUICoreCom::BTNTYPE_INC:
            return static_cast<DWORD>(incSlots.size());
        case SCBUICoreCom::BTNTYPE_VIRINC:
            return static_cast<DWORD>(virIncSlots.size());
        case SCBUICoreCom::BTNTYPE_CLL:
            return static_cast<DWORD>(cllSlots.size());
        }
        ThrowUnknownBtnType(operation);
    }
    [[noreturn]] static void ThrowUnknownBtnType(const char* operation);

    std::vector<SSlot> nrmSlots;
    std::vector<SSlot> incSlots;
    std::vector<SSlot> cllSlots;
    std::vector<SSlot> virIncSlots;
    SSlot empValSlot;
    DWORD entryCount = 0;
};

template <class T>
void TCBtnIDAssArr<T>::ThrowUnknownBtnType(const char* operation)
{
    const std::string function = std::string("NSKZ::NSKZCore::TCBtnIDAssArr::CConstIterator::") + operation;
    throw ECAbnormalData(SCBUICoreStrDef::MSG_UNKNOWN_BTNTYPE, "Src/TCBtnIDAssArr", function.c_str(),
                         __LINE__);
}

} // namespace NSKZ::NSKZCore

#endif
