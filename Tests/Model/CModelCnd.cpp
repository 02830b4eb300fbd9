#include "CModelCnd.h"

#include "CContainerOfBscBtnCnd.h"
#include "CUnitCndOfBscBtnCnd.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <memory>
#include <sstream>
#include <stdexcept>

namespace NSKZ::Test {

using NSKZCore::CBasicBtnCnd;
using NSKZCore::CContainerOfBscBtnCnd;
using NSKZCore::CRandom;
using NSKZCore::CUnitCndOfBscBtnCnd;
using NSKZCore::IComponentOfBscBtnCnd;
using NSKZCore::SCBUICoreCom;
using NSKZCore::SCKZCoreCom;

namespace {

std::unique_ptr<IComponentOfBscBtnCnd> MakeComponent(const SModelCnd& cnd)
{
    if (cnd.kind == SModelCnd::KIND_CONTAINER) {
        auto container = std::make_unique<CContainerOfBscBtnCnd>();
        container->SetBoolOperator(static_cast<SCKZCoreCom::EBoolOperator>(cnd.boolOperator));
        for (const SModelCnd& child : cnd.children)
            container->AddCndComponent(*MakeComponent(child));
        return container;
    }
    auto leaf = std::make_unique<CUnitCndOfBscBtnCnd>();
    leaf->SetNumID(cnd.numID);
    leaf->SetSelCondition(static_cast<CUnitCndOfBscBtnCnd::ESelCondition>(cnd.selCondition));
    leaf->SetCmpNum(cnd.cmpNum);
    if (!leaf->SetSumMethod(static_cast<SCBUICoreCom::ESumMethodForCnd>(cnd.sumMethod)) ||
        !leaf->SetRankNum(cnd.rankNum))
        throw std::logic_error("a leaf of a random condition was refused");
    return leaf;
}

} // namespace

bool SModelCnd::HasNumDataItem(DWORD id) const
{
    if (kind == KIND_CONTAINER)
        return std::any_of(children.begin(), children.end(),
                           [id](const SModelCnd& child) { return child.HasNumDataItem(id); });
    return kind == KIND_LEAF && numID == id;
}

std::string SModelCnd::Describe() const
{
    std::ostringstream out;
    out.precision(17);
    if (kind == KIND_NOTHING) {
        out << "nothing";
    } else if (kind == KIND_LEAF) {
        out << "item " << numID << " method " << sumMethod << std::hex << " 0x" << selCondition << std::dec;
        if (selCondition < 0x10000000)
            out << " rank " << rankNum;
        else
            out << " number " << cmpNum;
    } else {
        out << '(';
        for (const SModelCnd& child : children)
            out << (boolOperator == 1 ? " and " : " or ") << child.Describe();
        out << " )";
    }
    return out.str();
}

CBasicBtnCnd SModelCnd::Make() const
{
    CBasicBtnCnd made;
    if (kind != KIND_NOTHING)
        made.SetCndComponent(*MakeComponent(*this));
    return made;
}

SModelCnd SModelCnd::MakeRandom(CRandom& random, const std::vector<DWORD>& numIDs, DWORD depth)
{
    SModelCnd cnd;
    if (random.IsOneOf(25))
        return cnd;
    if (depth > 0 && random.IsOneOf(3)) {
        cnd.kind = KIND_CONTAINER;
        cnd.boolOperator = 1 + random.GetBelow(2);
        for (DWORD left = random.IsOneOf(10) ? 0 : 1 + random.GetBelow(3); left > 0; --left) {
            const SModelCnd child = MakeRandom(random, numIDs, depth - 1);
            if (child.kind != KIND_NOTHING)
                cnd.children.push_back(child);
        }
        return cnd;
    }

    cnd.kind = KIND_LEAF;
    cnd.numID = numIDs.empty() || random.IsOneOf(15)
                    ? random.GetBelow(12)
                    : numIDs[random.GetBelow(static_cast<DWORD>(numIDs.size()))];
    constexpr DWORD SELDOM_METHODS[] = {8, 9, 10, 11, 12, 14};
    cnd.sumMethod = random.IsOneOf(20) ? SELDOM_METHODS[random.GetBelow(std::size(SELDOM_METHODS))]
                                       : 1 + random.GetBelow(4);
    const bool byRank = random.IsOneOf(2);
    cnd.selCondition = byRank ? 1 + random.GetBelow(4) : 0x10000001 + random.GetBelow(6);
    cnd.rankNum = 1 + random.GetBelow(random.IsOneOf(4) ? 20 : 5);
    switch (random.GetBelow(10)) {
    case 0:
        cnd.cmpNum = 0;
        break;
    case 1:
        cnd.cmpNum = std::numeric_limits<double>::quiet_NaN();
        break;
    case 2:
        cnd.cmpNum = std::numeric_limits<double>::infinity();
        break;
    case 3:
        cnd.cmpNum = -static_cast<double>(random.GetBelow(30));
        break;
    case 4:
        cnd.cmpNum = static_cast<double>(random.GetBelow(300));
        break;
    case 5:
        cnd.cmpNum = 1.0 / (1 + random.GetBelow(8)); // of ratios
        break;
    default:
        cnd.cmpNum = static_cast<double>(random.GetBelow(20));
    }
    return cnd;
}

} // namespace NSKZ::Test
