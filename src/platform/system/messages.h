#pragma once

#include "platform/system/types.h"

/// Numbers of the window, dialog and control messages, with the system's values.

inline constexpr UINT WM_DESTROY = 0x0002;
inline constexpr UINT WM_SETTEXT = 0x000C, WM_GETTEXT = 0x000D, WM_GETTEXTLENGTH = 0x000E;
inline constexpr UINT WM_PAINT = 0x000F, WM_CLOSE = 0x0010;
inline constexpr UINT WM_NEXTDLGCTL = 0x0028;
inline constexpr UINT WM_INITDIALOG = 0x0110, WM_COMMAND = 0x0111;
inline constexpr UINT WM_USER = 0x0400;

inline constexpr UINT DM_GETDEFID = WM_USER, DM_SETDEFID = WM_USER + 1;
inline constexpr WORD DC_HASDEFID = 0x534B;  // high word of DM_GETDEFID's result when there is a default button

inline constexpr UINT EM_GETSEL = 0x00B0, EM_SETSEL = 0x00B1, EM_LIMITTEXT = 0x00C5, EM_GETLIMITTEXT = 0x00D5;
inline constexpr UINT EN_CHANGE = 0x0300, EN_UPDATE = 0x0400;

inline constexpr UINT BM_GETCHECK = 0x00F0, BM_SETCHECK = 0x00F1, BM_CLICK = 0x00F5;
inline constexpr UINT BN_CLICKED = 0;
inline constexpr WPARAM BST_UNCHECKED = 0, BST_CHECKED = 1;

inline constexpr UINT CB_LIMITTEXT = 0x0141, CB_ADDSTRING = 0x0143, CB_DELETESTRING = 0x0144, CB_GETCOUNT = 0x0146,
                      CB_GETCURSEL = 0x0147, CB_GETLBTEXT = 0x0148, CB_GETLBTEXTLEN = 0x0149, CB_INSERTSTRING = 0x014A,
                      CB_RESETCONTENT = 0x014B, CB_SETCURSEL = 0x014E, CB_FINDSTRINGEXACT = 0x0158;
inline constexpr LRESULT CB_ERR = -1;

inline constexpr UINT LB_ADDSTRING = 0x0180, LB_RESETCONTENT = 0x0184, LB_SETCURSEL = 0x0186, LB_GETCURSEL = 0x0188,
                      LB_GETTEXT = 0x0189, LB_GETTEXTLEN = 0x018A, LB_GETCOUNT = 0x018B;
inline constexpr LRESULT LB_ERR = -1;
