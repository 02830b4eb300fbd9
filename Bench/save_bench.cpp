// The saving benchmark: writing an environment over the press benchmark's table to files and reading it back,
// the link tables alone, the XML of the common form alone and both together, beside a plain copy of as many
// bytes as the link tables have in the same run. The copy is the bare loop of a program that reads the files
// in large blocks and writes them to others. The figures to quote are the ratio of the two for the link
// tables, and megabytes a second for the XML.
//
//     save_bench [ROWS [REPETITIONS]]
//
// The files are in the directory for temporary files, whose disk and cache the times are those of. Every
// time is taken with the files in the cache; nothing waits for the disk.

#include "CBenchTable.h"
#include "SCBenchTime.h"

#include "CBnLink_OnMemVer.h"
#include "CBUIDataMngr.h"
#include "CCoreSumMngr.h"
#include "CCSVLoader.h"
#include "CRpLink_OnMemVer.h"
#include "CSourceDataMngr.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <random>
#include <string>
#include <vector>

using namespace NSKZ::NSKZCore;

namespace {

namespace fs = std::filesystem;

// A directory that is gone at the end.
class CBenchDir
{
public:
    CBenchDir() : path(fs::temp_directory_path() / ("kzcbui_bench_" + std::to_string(std::random_device()())))
    {
        fs::create_directory(path);
    }
    ~CBenchDir()
    {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }
    CBenchDir(const CBenchDir&) = delete;
    CBenchDir& operator=(const CBenchDir&) = delete;

    const fs::path& GetPath() const { return path; }

private:
    fs::path path;
};

[[noreturn]] void Fail(const char* what)
{
    std::fprintf(stderr, "%s failed, error %u\n", what, GetLastError());
    std::exit(1);
}

// The link tables of an environment over the table, from what it answers.
void FillTables(const CBUIDataMngr& env, DWORD rows, CBnLink_OnMemVer& bnLink, CRpLink_OnMemVer& rpLink)
{
    std::vector<DWORD> btnClassIDs;
    env.GetAllBtnClassIDList(btnClassIDs, true);
    for (const DWORD btnClassID : btnClassIDs) {
        std::vector<DWORD> btnIDs;
        env.GetAllBtnIDListOfBtnClass(btnClassID, btnIDs, true);
        std::vector<DWORD> cells(rows);
        std::vector<DWORD> recs(rows);
        TCBtnIDAssArr<SRecordList> lists;
        DWORD used = 0;
        for (const DWORD btnID : btnIDs) {
            DWORD count = 0;
            env.GetRecListThatRelatesToBtn(btnClassID, btnID, recs.data() + used, count);
            for (DWORD i = 0; i < count; ++i)
                cells[recs[used + i]] = btnID;
            lists.Set(btnID, SRecordList{recs.data() + used, count});
            used += count;
        }
        if (used != rows || !bnLink.InsertFld(btnClassID, rows, cells.data()) ||
            !rpLink.InsertFld(btnClassID, lists, rows))
            Fail("taking the link tables over");
    }
}

std::uintmax_t GetSizeOfFiles(const fs::path& dir)
{
    std::uintmax_t size = 0;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(dir)) {
        if (entry.is_regular_file())
            size += entry.file_size();
    }
    return size;
}

// Copies the files of a directory and of those in it, block by block.
void CopyFiles(const fs::path& from, const fs::path& to)
{
    static std::vector<char> block(1 << 20);
    fs::create_directories(to);
    for (const fs::directory_entry& entry : fs::directory_iterator(from)) {
        const fs::path target = to / entry.path().filename();
        if (entry.is_directory()) {
            CopyFiles(entry.path(), target);
            continue;
        }
        std::FILE* const in = std::fopen(entry.path().c_str(), "rb");
        std::FILE* const out = std::fopen(target.c_str(), "wb");
        if (in == nullptr || out == nullptr)
            Fail("opening a file to copy");
        std::setvbuf(in, nullptr, _IONBF, 0);
        std::setvbuf(out, nullptr, _IONBF, 0);
        while (const std::size_t read = std::fread(block.data(), 1, block.size(), in)) {
            if (std::fwrite(block.data(), 1, read, out) != read)
                Fail("copying a file");
        }
        std::fclose(in);
        if (std::fclose(out) != 0)
            Fail("copying a file");
    }
}

// One line of the table.
struct SMeasured
{
    const char* name;
    double bytes;                  // that go through the files
    std::function<void()> prepare; // not measured
    std::function<void()> operation;
    std::vector<double> times;
};

} // namespace

int main(int argc, char** argv)
{
    const auto rows = static_cast<std::uint32_t>(argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 1000000);
    const int repetitions = argc > 2 ? std::atoi(argv[2]) : 15;
    if (rows == 0 || repetitions < 1) {
        std::fprintf(stderr, "usage: save_bench [ROWS [REPETITIONS]]\n");
        return 2;
    }
    constexpr auto ON_MEM = SCBUICoreCom::LINKTBLVERTYPE_ONMEM;
    CSourceDataMngr table;
    CCSVLoader(CCSVLoader::SOptions{}).LoadMemory(CBenchTable(rows).MakeCSV(), "bench", table);
    const CCoreSumMngr sums(table);
    const CBUIDataMngr env(1, ON_MEM, ON_MEM, table, &sums, nullptr);
    CBnLink_OnMemVer bnLink;
    CRpLink_OnMemVer rpLink;
    FillTables(env, rows, bnLink, rpLink);

    const CBenchDir dir;
    const fs::path saved = dir.GetPath() / "saved";
    const fs::path copied = dir.GetPath() / "copied";
    const std::string bnDir = (saved / "BnLink").string() + "/";
    const std::string rpDir = (saved / "RpLink").string() + "/";
    CBnLink_OnMemVer readBnLink;
    CRpLink_OnMemVer readRpLink;
    const auto save = [&] {
        if (!bnLink.WriteTo(bnDir.c_str()) || !rpLink.WriteTo(rpDir.c_str()))
            Fail("writing a link table");
    };
    const auto load = [&] {
        const auto endianness = SCKZCoreCom::GetEndiannessOfPresentEnvironment();
        const auto dataModel = SCKZCoreCom::GetDataModelOfPresentEnvironment();
        if (!readBnLink.ReadFrom(bnDir.c_str(), endianness, dataModel) ||
            !readRpLink.ReadFrom(rpDir.c_str(), endianness, dataModel))
            Fail("reading a link table");
    };
    save();
    const auto bytes = static_cast<double>(GetSizeOfFiles(saved));
    const auto indexBytes = static_cast<double>(fs::file_size(fs::path(rpDir) / "0.dat"));
    const std::string folder = (dir.GetPath() / "whole").string() + "/";
    const std::string xml = (dir.GetPath() / "common.xml").string();
    const auto saveEnv = [&](bool withData) {
        CXMLWriter writer(xml.c_str());
        if (!env.WriteCommonSpecByXML(folder.c_str(), writer, withData) || !writer.Close())
            Fail("writing the environment");
    };
    CBUIDataMngr readEnv(1, ON_MEM, ON_MEM, table, &sums);
    const auto loadEnv = [&] {
        CXMLReader reader(xml.c_str());
        if (readEnv.ReadCommonSpecByXML(folder.c_str(), reader, rows) != CXMLReader::READXML_OK)
            Fail("reading the environment");
    };
    saveEnv(false);
    const auto xmlBytes = static_cast<double>(fs::file_size(xml));
    std::printf("%u rows: link tables of %.1f MB, of it %.1f MB the index of RpLink; XML of %.1f MB\n\n",
                rows, bytes / 1e6, indexBytes / 1e6, xmlBytes / 1e6);

    // In turns, so that what else the machine does meets all alike. The first is what the others are compared
    // with, byte by byte.
    SMeasured measured[] = {
        {"plain copy", bytes, [&] { fs::remove_all(copied); }, [&] { CopyFiles(saved, copied); }, {}},
        {"save link tables", bytes, [&] { fs::remove_all(saved); }, save, {}},
        {"load link tables",
         bytes,
         [&] {
             readBnLink.Clear();
             readRpLink.Clear();
         },
         load,
         {}},
        {"save XML", xmlBytes, [] {}, [&] { saveEnv(false); }, {}},
        {"load XML", xmlBytes, [&] { saveEnv(false); }, loadEnv, {}},
        {"save all", bytes + xmlBytes, [] {}, [&] { saveEnv(true); }, {}},
        {"load all", bytes + xmlBytes, [&] { saveEnv(true); }, loadEnv, {}},
    };
    for (int i = 0; i < repetitions; ++i) {
        for (SMeasured& one : measured) {
            one.prepare();
            one.times.push_back(SCBenchTime::Measure(one.operation));
        }
    }
    std::printf("%20s %10s %10s %8s\n", "", "ms", "MB/s", "ratio");
    const double copy = SCBenchTime::GetMedian(measured[0].times) / measured[0].bytes;
    for (const SMeasured& one : measured) {
        const double time = SCBenchTime::GetMedian(one.times);
        std::printf("%20s %10.1f %10.0f %8.2f\n", one.name, time, one.bytes / 1e3 / time,
                    time / one.bytes / copy);
    }
    return 0;
}
