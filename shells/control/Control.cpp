#include "shells/control/Control.hpp"

#include "platform/foundation/PrintableText.hpp"
#include "shells/common/FileCheck.hpp"
#include "shells/common/Process.hpp"
#include "shells/common/Translation.hpp"
#include "shells/control/Categories.hpp"
#include "shells/control/Outputs.hpp"
#include "shells/control/Watcher.hpp"

#include <algorithm>
#include <cerrno>
#include <cstdlib>

namespace control {
namespace {

using shell::filled;
using shell::translated;

constexpr int exitMisuse = 2;
constexpr int exitWillNotLast = 3;

std::vector<CategoryReport> reportsOf(const CategoryList& categories, AVSystemController& service) {
    std::vector<CategoryReport> reports;
    for (const CategoryRecord& record : categories)
        reports.push_back(reportOf(record, service));
    return reports;
}

std::vector<Row> rowsFrom(const std::vector<CategoryReport>& reports) {
    std::vector<Row> rows(reports.size());
    std::ranges::transform(reports, rows.begin(), rowFrom);
    return rows;
}

Table tableFor(const std::vector<Row>& rows) {
    Table table(Output::isTerminal() ? Table::Style::Aligned : Table::Style::TabSeparated);
    table.makeRoomFor(rows);
    return table;
}

std::string tableText(const std::vector<CategoryReport>& reports) {
    const std::vector<Row> rows = rowsFrom(reports);
    Table table = tableFor(rows);
    std::string text = table.headingLine(reportHeading());
    for (const Row& row : rows)
        text += table.line(row);
    return text;
}

std::string jsonText(const std::vector<CategoryReport>& reports) {
    shell::Json array = shell::Json::array();
    for (const CategoryReport& report : reports)
        array.push_back(jsonFrom(report));
    return shell::lineFrom(array) + "\n";
}

shell::Json jsonFrom(const shell::FileProblem& problem) {
    const auto numberFrom = [](int number) {
        return number > 0 ? shell::Json(number) : shell::Json(nullptr);
    };
    return {{"file", problem.file},
            {"line", numberFrom(problem.place.line)},
            {"column", numberFrom(problem.place.column)},
            {"problem", problem.what},
            {"consequence", problem.instead}};
}

/// Explains why the category has no volume.
std::string unreadable(const CategoryRecord& record) {
    const CategoryList categories = mixerCategories();
    const bool isListed = std::ranges::any_of(categories, [&](const CategoryRecord& listed) {
        return listed.categoryName() == record.categoryName();
    });
    const char* text =
        isListed
            ? translated("'{category}' cannot be read: it has no device or stream at the moment")
            : translated(
                  "'{category}' is not one of the mixer's categories, and the sound "
                  "server does not know it");
    return filled(text, {{"category", describe(record.categoryName())}});
}

std::string willNotLast(const CategoryRecord& record) {
    const char* text = translated(
        "'{category}' is set, but its next sound will not use that: this sound server stores the "
        "volume without applying it. A running mixer applies it, such as "
        "\"tarnwick --background\".");
    return filled(text, {{"category", describe(record.categoryName())}});
}

}  // namespace

Control::Control(const Request& request) : request_(request), service_(request.server) {}

int Control::run() {
    if (request_.verb == Verb::Check) return check();  // Needs no server.
    if (!service_.waitUntilReady(request_.timeoutSeconds, request_.waitSeconds))
        return shell::complain(exitCannot, noServer());
    switch (request_.verb) {
        case Verb::List:
            return list();
        case Verb::Get:
            return withCategory(&Control::get);
        case Verb::Set:
            return withCategory(&Control::set);
        case Verb::Mute:
        case Verb::Unmute:
        case Verb::Toggle:
            return withCategory(&Control::mute);
        case Verb::Watch:
            return watch();
        case Verb::Outputs:
            return outputs();
        case Verb::Check:
            break;
    }
    return exitMisuse;
}

std::string Control::noServer() {
    const NSString reason = service_.volumes().whyUnavailable();
    const std::string server = request_.server.value_or("");
    const char* text = request_.server
                           ? reason ? translated("no sound server answers at {server}: {reason}")
                                    : translated("no sound server answers at {server}")
                       : reason ? translated("no sound server answers: {reason}")
                                : translated("no sound server answers");
    return filled(text, {{"server", server}, {"reason", reason.value_or("")}});
}

int Control::withCategory(int (Control::*action)(const CategoryRecord&)) {
    const auto record = categoryCalled(request_.category, mixerCategories());
    return record ? (this->*action)(*record) : shell::complain(exitMisuse, record.error());
}

int Control::list() {
    for (const shell::FileProblem& problem : shell::problemsOfFiles())
        shell::complain(lineOf(problem));
    const auto reports = reportsOf(mixerCategories(), service_.volumes());
    output_.write(request_.form == Form::Json ? jsonText(reports) : tableText(reports));
    return finish();
}

int Control::get(const CategoryRecord& record) {
    const CategoryReport report = reportOf(record, service_.volumes());
    if (request_.form == Form::Json)
        output_.write(shell::lineFrom(jsonFrom(report)) + "\n");
    else if (report.level)
        output_.write(volumeText(report) + "\n");
    if (!report.level) return shell::complain(exitCannot, unreadable(record));
    return finish();
}

int Control::set(const CategoryRecord& record) {
    AVSystemController& volumes = service_.volumes();
    const NSString& name = record.categoryName();
    const double fraction = request_.change->fraction();
    if (!volumes.levelOf(name)) return shell::complain(exitCannot, unreadable(record));
    const bool isSet = request_.change->isStep()
                           ? volumes.stepVolumeBy(fraction, name)
                           : volumes.setVolumeTo(static_cast<float>(fraction), name);
    return endOfSetting(record, isSet);
}

int Control::mute(const CategoryRecord& record) {
    AVSystemController& volumes = service_.volumes();
    const NSString& name = record.categoryName();
    if (!volumes.levelOf(name)) return shell::complain(exitCannot, unreadable(record));
    using Mute = AVSystemController::Mute;
    const Mute wanted = request_.verb == Verb::Mute ? Mute::On : Mute::Off;
    const bool isSet =
        request_.verb == Verb::Toggle ? volumes.toggleMute(name) : volumes.setMute(wanted, name);
    return endOfSetting(record, isSet);
}

int Control::endOfSetting(const CategoryRecord& record, bool isSent) {
    const std::string category = describe(record.categoryName());
    if (!isSent)
        return shell::complain(exitCannot, filled(translated("'{category}' cannot be set now"),
                                                  {{"category", category}}));
    if (!service_.waitUntilWritten(request_.timeoutSeconds))
        return shell::complain(exitCannot,
                               translated("the sound server did not confirm the volume"));
    if (const NSString reason = service_.refusal())
        return shell::complain(exitCannot,
                               filled(translated("'{category}' cannot be set: {reason}"),
                                      {{"category", category}, {"reason", *reason}}));
    if (!service_.volumes().lasts(record.categoryName()))
        return shell::complain(exitWillNotLast, willNotLast(record));
    return EXIT_SUCCESS;
}

int Control::watch() {
    LoopUntilEnd loop;
    const CategoryList categories = mixerCategories();
    const auto reports = reportsOf(categories, service_.volumes());
    Table table = tableFor(rowsFrom(reports));
    const bool isText = request_.form == Form::Text;
    const auto lineFor = [&](const CategoryReport& report) {
        return isText ? table.line(rowFrom(report)) : shell::lineFrom(jsonFrom(report)) + "\n";
    };
    std::string beginning = isText ? table.headingLine(reportHeading()) : "";
    if (!request_.changesOnly)
        for (const CategoryReport& report : reports)
            beginning += lineFor(report);
    const Watcher watcher(service_, categories, lineFor, [&](const std::string& line) {
        if (!output_.write(line)) loop.end();
    });
    if (output_.write(beginning)) loop.run();
    return output_.error() == EPIPE ? EXIT_SUCCESS : finish();
}

int Control::check() {
    const std::vector<shell::FileProblem> problems = shell::problemsOfFiles();
    std::string text;
    shell::Json array = shell::Json::array();
    for (const shell::FileProblem& problem : problems) {
        text += printableLine(lineOf(problem)) + "\n";
        array.push_back(jsonFrom(problem));
    }
    output_.write(request_.form == Form::Json ? shell::lineFrom(array) + "\n" : text);
    const int status = finish();
    return problems.empty() ? status : exitCannot;
}

int Control::outputs() {
    const int status = executeOutputs(request_, service_, output_);
    return status == EXIT_SUCCESS ? finish() : status;
}

int Control::finish() {
    if (output_.error() == 0) return EXIT_SUCCESS;
    return shell::complain(exitCannot, shell::outputComplaint(output_.error()));
}

}  // namespace control
