#ifndef ENVPICTURE_H
#define ENVPICTURE_H

#include "CBUIDataMngr.h"

#include <sstream>
#include <string>
#include <vector>

// An environment as text, for tests that compare two of them or one with what it was.

namespace NSKZ::Test {

class CEnvPicture
{
public:
    using CBUIDataMngr = NSKZCore::CBUIDataMngr;
    using VCBtnClass = NSKZCore::VCBtnClass;
    using List = std::vector<DWORD>;

    // All that can be asked, by identifiers. Buttons without records are left out, as are classes that are
    // switched off: a change leaves them behind when it is taken back.
    static std::string ByIDs(const CBUIDataMngr& env) { return CEnvPicture(env, true).Draw(); }

    // The same of the source classes by texts, in the order of their fields: what an environment that was
    // built anew from the same table must show too.
    static std::string ByTexts(const CBUIDataMngr& env) { return CEnvPicture(env, false).Draw(); }

private:
    CEnvPicture(const CBUIDataMngr& drawnEnv, bool drawIDs)
        : env(drawnEnv), withIDs(drawIDs), recs(std::size_t{env.GetRecCountOfSrcData()} + 1)
    {}

    std::string Draw()
    {
        DWORD count = 0;
        env.GetTargetRecList(recs.data(), count);
        Line("records", env.GetRecCountOfSrcData(), "target", count);
        PutRecs(count);
        Line("mode", static_cast<DWORD>(env.GetRelationMode()), "limited",
             static_cast<DWORD>(env.IsRecListLimitationExecuted()));
        std::vector<NSKZCore::SSelectBtnIDList> selection;
        env.GetAllBtnSelectionInfo(selection);
        for (const NSKZCore::SSelectBtnIDList& ofClass : selection) {
            DWORD fldID = 0;
            env.GetFldID(ofClass.btnClassID, fldID);
            Line("selected of field", fldID, "buttons", static_cast<DWORD>(ofClass.btnIDList.size()));
            if (withIDs)
                Put(ofClass.btnIDList);
        }
        std::map<DWORD, DWORD> classOfFld;
        env.GetBtnClassIDCnvObj(classOfFld);
        for (const auto& [fldID, btnClassID] : classOfFld)
            DrawClass("field", fldID, btnClassID);
        if (withIDs) {
            List classIDs;
            env.GetAllBtnClassIDList(classIDs, false);
            for (const DWORD btnClassID : classIDs) {
                if (NSKZCore::SCBUICoreCom::IsVirBtnClass(btnClassID))
                    DrawClass("virtual", btnClassID, btnClassID);
            }
        }
        return text.str();
    }

    void DrawClass(const char* what, DWORD number, DWORD btnClassID)
    {
        NSKZCore::SCBUICoreCom::EBtnClassType type{};
        env.GetTypeOfBtnClass(btnClassID, type);
        Line(what, number, "type", static_cast<DWORD>(type));
        DWORD count = 0;
        if (withIDs) {
            env.GetSelBtnCountOfBtnClass(btnClassID, count);
            Line("class", btnClassID, "selected", count);
        }
        env.GetDispBtnCountOfBtnClass(btnClassID, count);
        Line("displayed", count, "target of class", 0);
        env.GetTargetRecListOfBtnClass(btnClassID, recs.data(), count);
        PutRecs(count);
        List btnIDs;
        for (const unsigned int flags : {VCBtnClass::ORDLIST_INCLUDE_NONDISPBTNS, VCBtnClass::ORDLIST_NORMAL,
                                         VCBtnClass::ORDLIST_DESCEND}) {
            env.GetBtnAppOrdListOfBtnClass(btnClassID, flags, btnIDs);
            text << "app " << flags << ':';
            PutOrder(btnClassID, btnIDs);
            env.GetBtnNameOrdListOfBtnClass(btnClassID, flags, btnIDs);
            text << "name " << flags << ':';
            PutOrder(btnClassID, btnIDs);
        }
        if (withIDs)
            env.GetAllBtnIDListOfBtnClass(btnClassID, btnIDs, true);
        else // identifiers tell the history of the class, the order does not
            env.GetBtnAppOrdListOfBtnClass(btnClassID, VCBtnClass::ORDLIST_INCLUDE_NONDISPBTNS, btnIDs);
        for (const DWORD btnID : btnIDs)
            DrawBtn(btnClassID, btnID);
    }

    void DrawBtn(DWORD btnClassID, DWORD btnID)
    {
        unsigned int visibleInfo = 0;
        env.GetVisibleInfoOfBtn(btnClassID, btnID, visibleInfo);
        if ((visibleInfo & NSKZCore::VISINFO_NOREC) != 0)
            return;
        text << "  ";
        if (withIDs)
            text << '#' << btnID << ' ';
        bool sel = false;
        env.GetSelectionInfoOfBtn(btnClassID, btnID, sel);
        DWORD count = 0;
        const bool hasRecs = env.GetRecListThatRelatesToBtn(btnClassID, btnID, recs.data(), count);
        text << Text(btnClassID, btnID) << " hidden " << visibleInfo << (sel ? " selected" : "")
             << (hasRecs ? "" : " NO RECORDS TO HAVE") << ':';
        PutRecs(hasRecs ? count : 0);
        List members;
        if (withIDs && env.GetMemberBtnIDListOfSpBtn(btnClassID, btnID, members)) {
            bool effective = false;
            env.GetEffectiveInfoOfSpBtn(btnClassID, btnID, effective);
            text << (effective ? "    members" : "    off, members");
            Put(members);
        }
        if (withIDs && env.GetSpBtnIDListIncludingBtn(btnClassID, btnID, members) && !members.empty()) {
            text << "    in";
            Put(members);
        }
    }

    std::string Text(DWORD btnClassID, DWORD btnID) const
    {
        const char* alias = nullptr;
        env.GetAliasOfBtn(btnClassID, btnID, alias);
        return alias == nullptr ? "null" : alias;
    }

    void PutOrder(DWORD btnClassID, const List& btnIDs)
    {
        for (const DWORD btnID : btnIDs) {
            unsigned int visibleInfo = 0;
            env.GetVisibleInfoOfBtn(btnClassID, btnID, visibleInfo);
            if ((visibleInfo & NSKZCore::VISINFO_NOREC) == 0)
                text << ' ' << Text(btnClassID, btnID);
        }
        text << '\n';
    }

    void Line(const char* first, DWORD firstNumber, const char* second, DWORD secondNumber)
    {
        text << first << ' ' << firstNumber << ' ' << second << ' ' << secondNumber << '\n';
    }
    void PutRecs(DWORD count) { Put(List(recs.begin(), recs.begin() + count)); }
    void Put(const List& numbers)
    {
        for (const DWORD number : numbers)
            text << ' ' << number;
        text << '\n';
    }

    const CBUIDataMngr& env;
    bool withIDs;
    List recs;
    std::ostringstream text;
};

} // namespace NSKZ::Test

#endif
