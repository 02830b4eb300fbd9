#include "CPromptSource.h"

#include <histedit.h>

#include <algorithm>
#include <clocale>
#include <csignal>
#include <cstring>
#include <new>
#include <string_view>

#include <langinfo.h>

namespace NSKZ::Host {

namespace {

constexpr int HISTORY_SIZE = 500;

// The editor reads characters by the locale; typed text is UTF-8 whatever the user's locale says.
void UseUTF8ForCharacters()
{
    if (std::setlocale(LC_CTYPE, "") == nullptr || std::string_view(nl_langinfo(CODESET)) != "UTF-8")
        std::setlocale(LC_CTYPE, "C.UTF-8");
}

} // namespace

struct CPromptSource::SEditor
{
    SEditor(std::FILE* outputOfHost, CCompletion completionOfHost)
        : output(outputOfHost), completion(std::move(completionOfHost)), history(history_init()),
          editLine(el_init("kzcbui", stdin, outputOfHost, outputOfHost))
    {
        if (history == nullptr || editLine == nullptr) {
            Close();
            throw std::bad_alloc();
        }
        HistEvent event;
        ::history(history, &event, H_SETSIZE, HISTORY_SIZE);
        ::history(history, &event, H_SETUNIQUE, 1);
        el_set(editLine, EL_CLIENTDATA, this);
        el_set(editLine, EL_EDITOR, "emacs");
        el_set(editLine, EL_PROMPT, GetPrompt);
        el_set(editLine, EL_HIST, ::history, history);
        el_set(editLine, EL_ADDFN, "kzcbui-drop", "Drop the line", DropLine);
        el_set(editLine, EL_ADDFN, "kzcbui-complete", "Complete the word", Complete);
        el_set(editLine, EL_ADDFN, "kzcbui-suspend", "Suspend the program", Suspend);
        el_source(editLine, nullptr); // what the user has bound
        el_set(editLine, EL_BIND, "^I", "kzcbui-complete", nullptr);
        // While a line is edited Ctrl-C and Ctrl-Z are keys like any other.
        el_set(editLine, EL_SETTY, "-d", "-isig", nullptr);
        el_set(editLine, EL_BIND, "^C", "kzcbui-drop", nullptr);
        el_set(editLine, EL_BIND, "^Z", "kzcbui-suspend", nullptr);
    }
    ~SEditor() { Close(); }
    SEditor(const SEditor&) = delete;
    SEditor& operator=(const SEditor&) = delete;

    void Close() noexcept
    {
        if (editLine != nullptr)
            el_end(editLine);
        if (history != nullptr)
            history_end(history);
    }

    static SEditor& Get(EditLine* editLine)
    {
        void* self = nullptr;
        el_get(editLine, EL_CLIENTDATA, &self);
        return *static_cast<SEditor*>(self);
    }

    static char* GetPrompt(EditLine*)
    {
        static char prompt[] = "kzcbui> ";
        return prompt;
    }

    static unsigned char DropLine(EditLine* editLine, int)
    {
        Get(editLine).isDropped = true;
        return CC_EOF;
    }

    static unsigned char Suspend(EditLine* editLine, int)
    {
        el_set(editLine, EL_PREP_TERM, 0);
        std::raise(SIGTSTP);
        el_set(editLine, EL_PREP_TERM, 1);
        return CC_REDISPLAY;
    }

    static unsigned char Complete(EditLine* editLine, int)
    {
        const LineInfo* const info = el_line(editLine);
        const std::string line(info->buffer, info->cursor);
        const SEditor& self = Get(editLine);
        try {
            std::size_t wordBegin = 0;
            std::vector<std::string> words = self.completion(line, wordBegin);
            const std::string_view typed = std::string_view(line).substr(wordBegin);
            std::erase_if(words, [typed](const std::string& word) { return !word.starts_with(typed); });
            if (words.empty())
                return CC_ERROR;
            std::string common = words.front();
            for (const std::string& word : words) {
                const auto ends = std::mismatch(common.begin(), common.end(), word.begin(), word.end());
                common.erase(ends.first, common.end());
            }
            while (!common.empty() && IsInsideCharacter(words.front(), common.size()))
                common.pop_back();
            if (words.size() == 1)
                common += ' ';
            if (common.size() > typed.size())
                return el_insertstr(editLine, common.c_str() + typed.size()) == 0 ? CC_REFRESH : CC_ERROR;
            self.ListWords(words);
            return CC_REDISPLAY;
        } catch (const std::exception&) {
            return CC_ERROR;
        }
    }

    static bool IsInsideCharacter(const std::string& text, std::size_t pos)
    {
        return pos < text.size() && (static_cast<unsigned char>(text[pos]) & 0xC0) == 0x80;
    }

    void ListWords(const std::vector<std::string>& words) const
    {
        constexpr std::size_t MAX_LISTED = 40;
        std::fputc('\n', output);
        for (std::size_t i = 0; i < words.size() && i < MAX_LISTED; ++i)
            std::fprintf(output, "%s%s", i == 0 ? "" : "  ", words[i].c_str());
        std::fputs(words.size() > MAX_LISTED ? "  ...\n" : "\n", output);
    }

    std::FILE* output;
    CCompletion completion;
    History* history;
    EditLine* editLine;
    bool isDropped = false;
};

CPromptSource::CPromptSource(std::FILE* output, CCompletion completion)
{
    UseUTF8ForCharacters();
    editor = std::make_unique<SEditor>(output, std::move(completion));
}

CPromptSource::~CPromptSource() = default;

bool CPromptSource::ReadLine(std::string& line)
{
    for (;;) {
        editor->isDropped = false;
        int count = 0;
        // The editor prepares the terminal only behind its prompt; a key pressed between the two would be
        // lost.
        el_set(editor->editLine, EL_PREP_TERM, 1);
        const char* const typed = el_gets(editor->editLine, &count);
        if (editor->isDropped) {
            std::fputs("^C\n", editor->output);
            el_set(editor->editLine, EL_RESIZE); // begins with an empty line
            continue;
        }
        if (typed == nullptr || count <= 0) {
            std::fputc('\n', editor->output);
            std::fflush(editor->output);
            return false;
        }
        line.assign(typed, static_cast<std::size_t>(count));
        while (line.ends_with('\n') || line.ends_with('\r'))
            line.pop_back();
        if (line.find_first_not_of(" \t") != std::string::npos) {
            HistEvent event;
            history(editor->history, &event, H_ENTER, line.c_str());
        }
        return true;
    }
}

} // namespace NSKZ::Host
