#include "core/thrown-text.h"

#include <giomm/error.h>

#include <exception>
#include <string>

Thrown what_was_thrown()
{
  try {
    throw;
  } catch (const Gio::Error& caught) {
    return {"gioerr", caught.what().make_valid()};
  } catch (const Glib::Error& caught) {
    return {"gliberr", caught.what().make_valid()};
  } catch (const Glib::Exception& caught) {
    return {"glibexc", caught.what().make_valid()};
  } catch (const std::exception& caught) {
    return {"stdexc", Glib::ustring(caught.what()).make_valid()};
  } catch (const Glib::ustring& caught) {
    return {"ustr", caught.make_valid()};
  } catch (const std::string& caught) {
    return {"str", Glib::ustring(caught).make_valid()};
  } catch (const char* caught) {
    return {"cstr", Glib::ustring(caught).make_valid()};
  } catch (...) {
    return {};
  }
}

Glib::ustring thrown_text(const char* unknown, const char* wordless)
{
  const Thrown thrown = what_was_thrown();
  if (!thrown.kind)
    return unknown;
  return thrown.text.empty() ? Glib::ustring(wordless) : thrown.text;
}
