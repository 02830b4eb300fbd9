#include "SBnLinkIndex.h"

#include "SCLinkTableFile.h"

namespace NSKZ::NSKZCore {

bool SBnLinkIndex::Write(const char* dir, DWORD fldCount, DWORD recCount, const CFldPosOfBtnClass& fldPos)
{
    if (!SCLinkTableFile::PrepareWriting(dir))
        return false;
    CBinaryWriter writer(SCLinkTableFile::MakeIndexPath(dir).c_str(), true);
    writer.WriteData(fldCount);
    writer.WriteData(recCount);
    fldPos.WriteSrcTo(writer);
    return writer.Close();
}

bool SBnLinkIndex::Read(const char* dir)
{
    CLinkTableIndexReader reader(dir);
    return reader.Read(fldCount) && reader.Read(recCount) && fldPos.ReadSrcFrom(reader, fldCount) &&
           reader.ProveEnd();
}

} // namespace NSKZ::NSKZCore
