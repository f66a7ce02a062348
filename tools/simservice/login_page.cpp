#include "tools/simservice/login_page.h"

#include <filesystem>
#include <nlohmann/json.hpp>

#include "common/page_names.h"
#include "components/utils/file.h"

namespace zorvanelink::simservice {
namespace {

namespace fs = std::filesystem;

constexpr char kPage[] = R"(<!DOCTYPE html>
<meta charset="utf-8">
<title>Log in</title>
<style>body { font: 16px sans-serif; margin: 15vh auto; width: 20em; text-align: center }</style>
<script src="auth_data.js"></script>
<p><img id="icon" width="48" height="48" alt=""></p>
<p><a id="provider"></a></p>
<script>
  const link = document.getElementById("provider");
  link.href = auth_data.url;
  link.textContent = auth_data.name;
  document.getElementById("icon").src = auth_data.icon;
  location.replace(auth_data.url);
</script>
)";

constexpr char kIcon[] = R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 48 48">
  <circle cx="24" cy="24" r="22" fill="#1665D8"/><circle cx="24" cy="19" r="7" fill="#fff"/>
  <path d="M10 39a14 12 0 0 1 28 0z" fill="#fff"/>
</svg>
)";

}  // namespace

std::string WriteLoginPage(std::string const& data_folder, std::string const& address) {
    using components::utils::WritePrivateFile;
    fs::path const folder = fs::path(data_folder) / common::OAUTH_FOLDER;
    fs::path const icon = fs::path(common::OAUTH_ICON_FOLDER) / "provider.svg";
    std::error_code failed;
    fs::create_directories(folder / common::OAUTH_ICON_FOLDER, failed);
    nlohmann::ordered_json const data{
        {"name", "Example Identity"}, {"url", address}, {"icon", icon.string()}};
    fs::path const page = folder / common::OAUTH_PAGE_FILE_NAME;
    bool const written =
        !failed && fs::path(data_folder).is_absolute() && WritePrivateFile(folder / icon, kIcon) &&
        WritePrivateFile(folder / common::OAUTH_DATA_FILE_NAME,
                         common::kJavascriptOauthAuthNameStr + data.dump() + ";\n") &&
        WritePrivateFile(page, kPage);
    return written ? page.string() : std::string();
}

}  // namespace zorvanelink::simservice
