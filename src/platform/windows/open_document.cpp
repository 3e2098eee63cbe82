#include "platform/open_document.h"

#include <windows.h>

#include <objbase.h>
#include <shellapi.h>

namespace brisel {

void openDocument(const char* target, void* parentWindow) {
  // Programs may be started through components, which want the thread prepared for them.
  const HRESULT prepared =
      CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE);
  ShellExecuteA(static_cast<HWND>(parentWindow), "open", target, nullptr, nullptr, SW_SHOW);
  if (SUCCEEDED(prepared)) CoUninitialize();
}

}  // namespace brisel
