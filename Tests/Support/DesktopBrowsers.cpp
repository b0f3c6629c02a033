#include "Support/DesktopBrowsers.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace stintbook {

namespace fs = std::filesystem;

int servePages(PrivateDesktop& desktop,
               const std::vector<std::pair<std::string, std::string>>& namesAndTitles)
{
    auto pages = desktop.home() / "pages";
    fs::create_directories(pages);
    for (const auto& [name, title] : namesAndTitles)
        std::ofstream(pages / name) << "<!DOCTYPE html><meta charset=utf-8><title>" << title << "</title><p>"
                                    << title;

    // A port of its own choice, told through a file.
    auto portFile = (desktop.home() / "port").string();
    std::ofstream(desktop.home() / "serve.py") << R"(import functools, http.server, os, sys
class Pages(http.server.SimpleHTTPRequestHandler):
    extensions_map = {'': 'text/html'}
server = http.server.ThreadingHTTPServer(('127.0.0.1', 0), functools.partial(Pages, directory=sys.argv[1]))
with open(sys.argv[2] + '.new', 'w') as file:
    file.write(str(server.server_port))
os.rename(sys.argv[2] + '.new', sys.argv[2])
server.serve_forever()
)";
    desktop.start({"/usr/bin/python3", desktop.home() / "serve.py", pages, portFile});
    if (!PrivateDesktop::eventually([&] { return fs::exists(portFile); }))
        throw std::runtime_error("The pages are not served.");
    int port = 0;
    std::ifstream(portFile) >> port;
    return port;
}

pid_t startFirefox(PrivateDesktop& desktop, const std::vector<std::string>& arguments)
{
    auto profile = desktop.home() / "firefox";
    if (!fs::exists(profile)) {
        fs::create_directories(profile);
        std::ofstream(profile / "user.js") << R"(user_pref("app.normandy.enabled", false);
user_pref("app.shield.optoutstudies.enabled", false);
user_pref("app.update.enabled", false);
user_pref("browser.aboutwelcome.enabled", false);
user_pref("browser.discovery.enabled", false);
user_pref("browser.newtabpage.activity-stream.feeds.topsites", false);
user_pref("browser.safebrowsing.malware.enabled", false);
user_pref("browser.safebrowsing.phishing.enabled", false);
user_pref("browser.sessionstore.resume_from_crash", false);
user_pref("browser.shell.checkDefaultBrowser", false);
user_pref("browser.startup.homepage_override.mstone", "ignore");
user_pref("browser.startup.page", 0);
user_pref("datareporting.healthreport.uploadEnabled", false);
user_pref("datareporting.policy.dataSubmissionEnabled", false);
user_pref("dom.security.https_only_mode", false);
user_pref("extensions.update.enabled", false);
user_pref("network.captive-portal-service.enabled", false);
user_pref("network.connectivity-service.enabled", false);
user_pref("network.dns.localDomains", "example.test,docs.example.test,mail.example.test,code.example.test");
user_pref("network.prefetch-next", false);
user_pref("services.settings.server", "http://127.0.0.1:9/");
user_pref("toolkit.telemetry.enabled", false);
)";
    }
    PrivateDesktop::Command command{"firefox-esr", "--profile", profile};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return desktop.start(command);
}

pid_t startChromium(PrivateDesktop& desktop, const std::vector<std::string>& arguments)
{
    PrivateDesktop::Command command{"chromium",
                                    "--user-data-dir=" + (desktop.home() / "chromium").string(),
                                    "--host-resolver-rules=MAP *.example.test 127.0.0.1",
                                    "--no-sandbox",
                                    "--no-first-run",
                                    "--no-default-browser-check",
                                    "--disable-background-networking",
                                    "--disable-component-update",
                                    "--disable-gpu",
                                    "--disable-dev-shm-usage",
                                    "--password-store=basic"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return desktop.start(command);
}

} // namespace stintbook
