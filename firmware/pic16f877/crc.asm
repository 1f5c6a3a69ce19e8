; SPDX-License-Identifier: MIT
; CRC-16/CCITT-FALSE: polynomial 1021, highest bit first, one byte at a time without a table.
;
; crc_high, crc_low   the current value, FFFF before the first byte
; crc_start           set to FFFF.                  7 cycles     uses W
; crc_add             add the byte in W.            24 cycles    uses W

        include "board.inc"

        global  crc_high, crc_low, crc_start, crc_add

crc_data        udata_shr
crc_high        res 1
crc_low         res 1
turned          res 1
higher          res 1

crc_code        code
crc_start:
        movlw   0xFF
        movwf   crc_high
        movwf   crc_low
        return

; With x = (high ^ byte) ^ (high ^ byte) >> 4, the new value is low << 8 ^ x << 12 ^ x << 5 ^ x.
; x rotated left by 5 contains both parts of x << 5: the lower five bits belong to the high byte, the upper three to
; the low byte.
crc_add:
        xorwf   crc_high, F
        swapf   crc_high, W
        andlw   0x0F
        xorwf   crc_high, F             ; x
        swapf   crc_high, W
        movwf   turned
        andlw   0xF0
        xorwf   crc_low, F              ; low ^ x << 4
        rlf     turned, W
        rlf     turned, F               ; x rotated left by 5
        movf    turned, W
        andlw   0x1F
        xorwf   crc_low, W
        movwf   higher
        movf    turned, W
        andlw   0xE0
        xorwf   crc_high, W
        movwf   crc_low
        movf    higher, W
        movwf   crc_high
        return

        end
