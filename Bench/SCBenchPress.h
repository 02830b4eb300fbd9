#ifndef SCBENCHPRESS_H
#define SCBENCHPRESS_H

#include "SCBenchTime.h"

#include "CBUIDataMngr.h"

#include <vector>

// The press that the benchmarks measure.
class SCBenchPress
{
public:
    SCBenchPress() = delete;

    // The button of the i-th press of an item: another one each time, over all its buttons.
    static DWORD PickBtn(const std::vector<DWORD>& btnIDs, int i)
    {
        return btnIDs[(static_cast<std::size_t>(i) * 7919 + btnIDs.size() / 3) % btnIDs.size()];
    }

    // Presses a button of the item `fld` with nothing selected before, up to and including the count of
    // displayed buttons of every item, and adds the time, in milliseconds. `displayed` becomes the count for
    // the other items but the last. Returns the engine's own answer.
    static bool Press(NSKZ::NSKZCore::CBUIDataMngr& env, const std::vector<DWORD>& btnClassIDs,
                      std::size_t fld, DWORD btnID, std::vector<double>& times, std::size_t& displayed)
    {
        env.ClearAllBtnSelections(true);
        const SCBenchTime::Clock::time_point start = SCBenchTime::Clock::now();
        const bool pressed = env.SelectTheBtn(btnClassIDs[fld], btnID, true);
        displayed = 0;
        for (const DWORD btnClassID : btnClassIDs) {
            DWORD count = 0;
            env.GetDispBtnCountOfBtnClass(btnClassID, count);
            displayed += btnClassID == btnClassIDs[fld] || btnClassID == btnClassIDs.back() ? 0 : count;
        }
        times.push_back(SCBenchTime::GetMilliseconds(SCBenchTime::Clock::now() - start));
        return pressed;
    }
};

#endif
