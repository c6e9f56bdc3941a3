#pragma once

// From the first call on, a link in any label and in About that no program can open shows
// a message with its address, which the user can copy. The toolkit itself would only print
// a warning, or name the reason without the address.
void install_link_opener();
