#pragma once

#include <glibmm/ustring.h>

// Plain words as Pango markup: shows exactly as typed.
Glib::ustring escape_markup(const Glib::ustring& text);

// `text` with its ampersands as plain words and its tags as they are.
Glib::ustring escape_ampersands(const Glib::ustring& text);

// Whether the toolkit's labels can show `text` as markup, links included.
bool is_markup(const Glib::ustring& text);

// `text` itself if it is valid markup, else markup that shows it as it stands,
// so that no label or dialog comes up empty over a stray "<" or "&".
Glib::ustring readable_markup(const Glib::ustring& text);
