// NetBIOS 3.0: finding an adapter's address.
//
// Promises: NCBENUM, NCBRESET and NCBASTAT for the name "*" on the adapters of the fact "netbios"; an adapter must be
// reset before it answers anything else. An export of netapi32.dll. Simplifies: every command waits; other commands are
// NRC_ILLCMD; the status holds the address and no names. To fail: the fact's "reset" and "status"; the fault plan,
// "Netbios" (subject: "NCBENUM" …; the error is the return code).
#pragma once

#include <windef.h>

#define NCBNAMSZ 16
#define MAX_LANA 254

using PUCHAR = UCHAR*;

struct NCB {
  UCHAR ncb_command;
  UCHAR ncb_retcode;
  UCHAR ncb_lsn;
  UCHAR ncb_num;
  PUCHAR ncb_buffer;
  WORD ncb_length;
  UCHAR ncb_callname[NCBNAMSZ];
  UCHAR ncb_name[NCBNAMSZ];
  UCHAR ncb_rto;
  UCHAR ncb_sto;
  void(CALLBACK* ncb_post)(NCB*);
  UCHAR ncb_lana_num;
  UCHAR ncb_cmd_cplt;
  UCHAR ncb_reserve[18];
  HANDLE ncb_event;
};
using PNCB = NCB*;

struct ADAPTER_STATUS {
  UCHAR adapter_address[6];
  UCHAR rev_major;
  UCHAR reserved0;
  UCHAR adapter_type;
  UCHAR rev_minor;
  WORD duration;
  WORD frmr_recv;
  WORD frmr_xmit;
  WORD iframe_recv_err;
  WORD xmit_aborts;
  DWORD xmit_success;
  DWORD recv_success;
  WORD iframe_xmit_err;
  WORD recv_buff_unavail;
  WORD t1_timeouts;
  WORD ti_timeouts;
  DWORD reserved1;
  WORD free_ncbs;
  WORD max_cfg_ncbs;
  WORD max_ncbs;
  WORD xmit_buf_unavail;
  WORD max_dgram_size;
  WORD pending_sess;
  WORD max_cfg_sess;
  WORD max_sess;
  WORD max_sess_pkt_size;
  WORD name_count;
};

struct NAME_BUFFER {
  UCHAR name[NCBNAMSZ];
  UCHAR name_num;
  UCHAR name_flags;
};

struct LANA_ENUM {
  UCHAR length;
  UCHAR lana[MAX_LANA + 1];
};

#define NCBRESET 0x32
#define NCBASTAT 0x33
#define NCBENUM 0x37

#define NRC_GOODRET 0x00
#define NRC_BUFLEN 0x01
#define NRC_ILLCMD 0x03
#define NRC_INCOMP 0x06
#define NRC_BRIDGE 0x23
#define NRC_ENVNOTDEF 0x34

UCHAR WINAPI Netbios(PNCB block);
