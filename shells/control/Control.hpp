#pragma once

#include "config/CategoryList.hpp"
#include "shells/control/Output.hpp"
#include "shells/control/Request.hpp"
#include "shells/control/Service.hpp"

namespace control {

/// Executes one request. Messages go to standard error, results to standard output.
///
///     return Control(request).run();
class Control {
 public:
    explicit Control(const Request& request);

    /// The program's exit status: 0 done, 1 it could not be done, 2 misuse.
    int run();

 private:
    int list();
    int get(const CategoryRecord& record);
    int set(const CategoryRecord& record);
    int mute(const CategoryRecord& record);
    int endOfSetting(const CategoryRecord& record, bool isSent);
    int watch();
    int check();
    int outputs();
    std::string noServer();
    int withCategory(int (Control::*action)(const CategoryRecord&));
    int finish();

    const Request& request_;
    Output output_;
    Service service_;
};

}  // namespace control
