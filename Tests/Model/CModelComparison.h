#ifndef CMODELCOMPARISON_H
#define CMODELCOMPARISON_H

#include "CModelEnv.h"
#include "Support/CRandom.h"

#include <sstream>
#include <string>

namespace NSKZ::Test {

// Asks an environment and the model everything that is to be seen, and tells where they differ.
class CModelComparison
{
public:
    CModelComparison(const NSKZCore::CBUIDataMngr& environment, CModelEnv& modelOfIt,
                     NSKZCore::CRandom& choice)
        : env(environment), model(modelOfIt), random(choice)
    {}

    // Each difference on a line; empty if there is none. Of sums and orders a random choice is asked for.
    std::string Compare();

private:
    void CompareEnvironment();
    void CompareItem(const SModelItem& item);
    void CompareClass(const SModelItem& item);
    void CompareOrders(const SModelItem& item);
    void CompareBtns(const SModelItem& item);
    void CompareWayUp(const SModelItem& item, DWORD btnID);
    void CompareSpBtns(const SModelItem& item);
    void CompareSpBtn(const SModelItem& item, DWORD btnID, const SModelBtn& btn);
    void CompareCnd(const SModelItem& item, DWORD btnID, const SModelBtn& btn);
    void CompareNoSpBtn(const SModelItem& item);
    void CompareRecsOfBtn(const SModelItem& item, DWORD btnID);
    void CompareRecs(const SModelItem& item);
    void CompareDates(const SModelItem& item);
    void CompareGroups(const SModelItem& item);
    void CompareBtnsOfDates(const SModelItem& item);
    void CompareLatest(const SModelItem& item);
    void CompareNoDates(const SModelItem& item);
    void CompareSums();
    void CompareUnknown();

    DWORD ChooseClassID();
    DWORD ChooseBtnID(DWORD classID);
    DWORD ChooseNumID();
    SModelDate ChooseDate(const SModelItem& item);

    // The records that `ask(recList, count)` gives.
    template <class TAsk>
    IDList AskRecs(const char* what, const TAsk& ask);
    template <class TValue>
    void Check(const char* what, DWORD classID, DWORD btnID, const TValue& envSays, const TValue& modelSays);

    const NSKZCore::CBUIDataMngr& env;
    CModelEnv& model;
    NSKZCore::CRandom& random;
    std::ostringstream differences;
};

} // namespace NSKZ::Test

#endif
