#pragma once

// Installs a handler for links in labels and in the About dialog. If no program can open a
// link, the handler shows a message with the address, and the user can copy it. The toolkit's
// own handlers only print a warning, or show the reason without the address.
void install_link_opener();
