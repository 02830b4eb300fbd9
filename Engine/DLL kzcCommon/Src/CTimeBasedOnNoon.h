#ifndef CTIMEBASEDONNOON_H
#define CTIMEBASEDONNOON_H

#include "VCDate.h"

namespace NSKZ::NSKZCore {

// The morning or the afternoon.
class KZCCOMMON_API CTimeBasedOnNoon final : public VCDate
{
public:
    CTimeBasedOnNoon() = default;

    // False, with nothing held, for a value that is neither; TIMEBASEDONNOON_UNSETTING gives true.
    bool SetTimeBasedOnNoon(ETimeBasedOnNoon value) noexcept;
    void Clear() noexcept;

    bool GetTimeBasedOnNoon(ETimeBasedOnNoon& value) const noexcept override;
    bool GetDateNumeric(DWORD startMonth, DWORD cutOffDate, EDaysOfTheWeek daysOfWeek,
                        unsigned long long& numeric) const noexcept override;
    bool GetDateString(char* buffer, DWORD size) const noexcept override;
    EDateObjType GetType() const noexcept override { return DATEOBJTYPE_TIMEBASEDONNOON; }
    std::unique_ptr<VCDate> CreateClone() const override;
    bool WriteSpecByXML(CXMLWriter& writer) const override;
    CXMLReader::EMthRetOfReadXML ReadSpecByXML(const CXMLReader& reader) override;

private:
    ETimeBasedOnNoon time = TIMEBASEDONNOON_UNSETTING;
};

} // namespace NSKZ::NSKZCore

#endif
