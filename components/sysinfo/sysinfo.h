// Facts about this machine that go with a login. Each is read anew from the system; a fact that
// cannot be had is an empty string. Any thread; no network.
#pragma once

#include <string>

namespace zorvanelink::components::sysinfo {

std::string GetHostName();
// The distribution's name and the kernel's release: "Debian GNU/Linux 12
// (bookworm) 6.1.0-18-amd64".
std::string GetSysVersion(std::string const& os_release_file = "/etc/os-release");
// The machine's id, 32 hexadecimal digits.
std::string GetHostId(std::string const& machine_id_file = "/etc/machine-id");
// The address, such as "52:54:00:12:34:56", of the first network card by name. A card with a
// device behind it goes before a virtual one; the loopback never counts.
std::string GetMacAddresses(std::string const& net_folder = "/sys/class/net");

}  // namespace zorvanelink::components::sysinfo
