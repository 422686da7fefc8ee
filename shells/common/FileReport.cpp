#include "shells/common/FileReport.hpp"

#include "shells/common/FileCheck.hpp"
#include "shells/common/Translation.hpp"

namespace shell {
namespace {

constexpr std::size_t mostLines = 4;

NSString noticeOf(const std::vector<FileProblem>& problems) {
    NSString notice;
    std::size_t lines = 0;
    std::size_t untold = problems.size();
    for (const FileProblem& problem : problems) {
        lines += problem.brief.size();
        if (lines > mostLines) break;
        --untold;
        for (const std::string& line : problem.brief)
            notice = joinedNotices(notice, line);
    }
    if (untold == 0) return notice;
    // TRANSLATORS: The last line of a notice, when there are more problems than it has room for.
    const char* more = translatedCount("{count} more: tarnwickctl check lists it",
                                       "{count} more: tarnwickctl check lists them", untold);
    return joinedNotices(notice, filled(more, {{"count", std::to_string(untold)}}));
}

}  // namespace

void FileReport::refresh() {
    const std::vector<FileProblem> problems = problemsOfFiles();
    std::set<std::string> now;
    for (const FileProblem& problem : problems) {
        const std::string line = lineOf(problem);
        if (now.insert(line).second && !told_.contains(line)) tell_(line);
    }
    told_ = std::move(now);
    notice_ = noticeOf(problems);
}

void FileReport::refreshNotice() {
    notice_ = noticeOf(problemsOfFiles());
}

NSString joinedNotices(const NSString& above, const NSString& below) {
    if (!above || !below) return above ? above : below;
    return *above + "\n" + *below;
}

}  // namespace shell
