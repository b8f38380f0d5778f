// Calls across the layers through the one header that has them all.
#include <cstdio>

#include "velmora/velmora.h"

int main() {
  velmora::CProjPath paths;
  if (paths.SetPath(L"D:\\ROAD") != 0) return 1;
  velmora::CString text;
  text.Format(L"%s %.1f", paths.m_ZipPath, 2.5);
  if (text != L"D:\\ROAD\\TUNDRIL.ZIP 2.5") return 2;
  velmora::list0<int> numbers;
  const int seven = 7;
  numbers.Ny(1, &seven);
  if (numbers.Home() != 0 || *numbers.pael != 7) return 3;
  velmora::CVaglinje line;
  if (line.Init(L"D:\\no such file.vl") == 0) return 4;
  std::puts("found");
  return 0;
}
