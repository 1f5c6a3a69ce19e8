; SPDX-License-Identifier: MIT
; The converter on AN0, and the settling timer.
;
; Timer 1 starts at the FQ_UD pulse and sets TMR1IF when SETTLE_LEAD cycles of the settling time remain: frames.asm
; needs at least this many cycles before it starts the conversion.
;
; sample (2 bytes)                 the latest result, low byte first
; converter_settling (2 bytes, bank 1)   the settling time in microseconds
;
; converter_start    set up; set the settling time to 50 us. 743 cycles                         uses W, FSR
; converter_settle   set the settling time to number, 20 to 10,000 us. 904 cycles at most       uses W, FSR
; converter_arm      prepare the timer; setting TMR1ON starts it. 10 cycles                     uses W
; converter_read     wait for the conversion, store the result in sample. 14 cycles or more     uses W

        include "board.inc"

        global  sample, converter_settling
        global  converter_start, converter_settle, converter_arm, converter_read

        extern  number, factor, product, numbers_clear, numbers_store, numbers_multiply

; cycles per microsecond * 2^16, rounded up
CYCLE_SCALE     equ (CYCLES_PER_MS * 65536 + 999) / 1000

converter_data  udata
sample          res 2
timer           res 2                   ; start value of timer 1

converter_bank1 udata
converter_settling res 4

converter_code  code
converter_start:
        banksel ADCON1
        movlw   (1 << ADFM) | B'0101'   ; right-justified; AN0 and AN1 analog, VREF+ on AN3, VREF- is ground
        movwf   ADCON1
        banksel ADCON0
        movlw   B'10000001'             ; Fosc/32, AN0, on
        movwf   ADCON0
        clrf    T1CON                   ; no prescaler, stopped
        call    numbers_clear
        movlw   50
        movwf   number
converter_settle:
        movlw   converter_settling
        movwf   FSR
        call    numbers_store
        movlw   LOW CYCLE_SCALE
        movwf   factor
        movlw   HIGH CYCLE_SCALE
        movwf   factor + 1
        movlw   UPPER CYCLE_SCALE
        movwf   factor + 2
        clrf    factor + 3
        clrf    factor + 4
        call    numbers_multiply
        movf    product, W              ; cycles: product / 2^16, rounded up, in bytes 2 and 3
        iorwf   product + 1, W
        skpnz
        goto    rounded
        incf    product + 2, F
        skpnz
        incf    product + 3, F
rounded:
        movf    product + 2, W          ; timer = lead - cycles, so that it overflows after cycles - lead
        sublw   SETTLE_LEAD
        movwf   timer
        movf    product + 3, W
        skpc
        addlw   1
        sublw   0
        movwf   timer + 1
        skpc
        return
        movlw   0xFF                    ; shorter than the lead: overflow immediately
        movwf   timer
        movwf   timer + 1
        return

converter_arm:
        bcf     T1CON, TMR1ON
        movf    timer, W
        movwf   TMR1L
        movf    timer + 1, W
        movwf   TMR1H
        bcf     PIR1, TMR1IF
        return

converter_read:
        btfsc   ADCON0, GO
        goto    converter_read
        movf    ADRESH, W
        movwf   sample + 1
        banksel ADRESL
        movf    ADRESL, W
        banksel sample
        movwf   sample
        return

        end
