; SPDX-License-Identifier: MIT
; The board's identity: the reply to `?`, without the carriage return.
;
; identity_send   send, for example, "?+CALVORN-PIC 1.0 AD9850 125000000 50"; wait while the
;                 transmit buffer is full.                                                 uses W, FSR

        include "board.inc"

        global  identity_send

        extern  line_send
        extern  number, factor, numbers_load, numbers_divide
        extern  synth_chip, synth_clock
        extern  converter_settling

DIGITS          equ 9                   ; in the longest number; stored in factor and product, unused by divisions

identity_data   udata
place           res 1                   ; index into the text, or address of a digit

identity_code   code
identity_send:
        clrf    place
send_text:
        call    text
        iorlw   0
        skpnz
        goto    send_values
        call    line_send
        incf    place, F
        goto    send_text
send_values:
        movf    synth_chip, W
        call    line_send
        movlw   ' '
        call    line_send
        movlw   synth_clock
        call    send_number
        movlw   ' '
        call    line_send
        movlw   converter_settling
        goto    send_number

; Returns the character at index `place` of the text.
text:
        movlw   HIGH characters
        movwf   PCLATH
        movlw   LOW characters
        addwf   place, W
        skpnc
        incf    PCLATH, F
        movwf   PCL
characters:
        dt      "?+CALVORN-PIC 1.0 AD985", 0

; Sends the four bytes at W as a decimal number. The division yields the last digit first.
send_number:
        movwf   FSR
        call    numbers_load
        movlw   factor + DIGITS
        movwf   FSR
next_digit:
        call    numbers_divide
        addlw   '0'
        decf    FSR, F
        movwf   INDF
        movf    number, W
        iorwf   number + 1, W
        iorwf   number + 2, W
        iorwf   number + 3, W
        skpz
        goto    next_digit
        movf    FSR, W
        movwf   place
send_digit:
        movf    place, W
        movwf   FSR
        movf    INDF, W
        call    line_send
        incf    place, F
        movf    place, W
        xorlw   factor + DIGITS
        skpz
        goto    send_digit
        return

        end
