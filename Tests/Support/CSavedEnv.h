#ifndef CSAVEDENV_H
#define CSAVEDENV_H

#include "CBUIDataMngr.h"
#include "CTempDir.h"
#include "XMLText.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace NSKZ::Test {

// The saved forms of an environment in a directory of their own, as texts to look at and to change.
class CSavedEnv
{
public:
    using EMthRetOfReadXML = NSKZCore::CXMLReader::EMthRetOfReadXML;

    CSavedEnv() : folder(dir.GetPath().string() + "\\") {}

    const std::string& GetFolder() const noexcept { return folder; }

    bool SaveCommon(const NSKZCore::CBUIDataMngr& env, bool withData = true)
    {
        NSKZCore::CXMLWriter writer(GetPath("common.xml").string().c_str());
        return env.WriteCommonSpecByXML(folder.c_str(), writer, withData) && writer.Close();
    }
    bool SaveFixed(const NSKZCore::CBUIDataMngr& env)
    {
        NSKZCore::CXMLWriter writer(GetPath("fixed.xml").string().c_str());
        return env.WriteFixedSpecByXML(writer) && writer.Close();
    }
    bool Save(const NSKZCore::CBUIDataMngr& env) { return SaveCommon(env) && SaveFixed(env); }

    EMthRetOfReadXML LoadCommon(NSKZCore::CBUIDataMngr& env, DWORD recCount)
    {
        NSKZCore::CXMLReader reader(GetPath("common.xml").string().c_str());
        return env.ReadCommonSpecByXML(folder.c_str(), reader, recCount);
    }
    EMthRetOfReadXML LoadFixed(NSKZCore::CBUIDataMngr& env, const std::vector<DWORD>& limited = {})
    {
        NSKZCore::CXMLReader reader(GetPath("fixed.xml").string().c_str());
        return env.ReadFixedSpecByXML(reader, limited.data(), static_cast<DWORD>(limited.size()));
    }

    std::filesystem::path GetPath(const std::string& name) const { return dir.GetPath() / name; }
    std::string GetText(const std::string& name) const { return ReadWholeFile(GetPath(name)); }
    void SetText(const std::string& name, const std::string& text) const
    {
        std::filesystem::create_directories(GetPath(name).parent_path());
        std::ofstream(GetPath(name), std::ios::binary) << text;
    }
    // Puts `after` in the place of `before`, which stands there.
    void Replace(const std::string& name, const std::string& before, const std::string& after) const
    {
        std::string text = GetText(name);
        const std::size_t found = text.find(before);
        ASSERT_NE(found, std::string::npos) << before << " in " << text;
        SetText(name, text.replace(found, before.size(), after));
    }

private:
    CTempDir dir;
    std::string folder;
};

} // namespace NSKZ::Test

#endif
