// Names of the pages that a service writes below the client's data folder. A "*.js" file holds one
// statement, which assigns the data to a variable.
#pragma once

namespace zorvanelink::common {

// The login at a third party.
inline constexpr char OAUTH_FOLDER[] = "oauth";
inline constexpr char OAUTH_ICON_FOLDER[] = "images";  // below it
inline constexpr char OAUTH_PAGE_FILE_NAME[] = "auth.html";
inline constexpr char OAUTH_DATA_FILE_NAME[] = "auth_data.js";
inline constexpr char kJavascriptOauthAuthNameStr[] = "var auth_data=";

}  // namespace zorvanelink::common
