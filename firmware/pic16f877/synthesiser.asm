; SPDX-License-Identifier: MIT
; The generator, an AD9850 or AD9851 with serial loading, and its clock.
;
; synth_word (4 bytes)    the tuning word, W4 first; also the upper half of the plan's accumulator
; synth_clock (4 bytes, bank 1)   hertz, after the multiplier
; synth_scale (5 bytes, bank 1)   K = round(2^64 / clock)
; synth_chip              last digit of the chip's name, '0' or '1'
;
; synth_start    read chip and clock from the jumpers, enter serial mode, switch off. 319 cycles        uses W
; synth_load     shift in synth_word and the control byte; the output does not change. 192 cycles       uses W
; synth_update   FQ_UD: activate the loaded word. 7 cycles, with the edge in the fourth                 uses W
; synth_off      load and activate word 0, powered down. 205 cycles                                     uses W

        include "board.inc"
        include "clocks.inc"

        global  synth_word, synth_clock, synth_scale, synth_chip
        global  synth_start, synth_load, synth_update, synth_off

POWER_DOWN      equ 2                   ; bits in the control byte W0
MULTIPLIER      equ 0                   ; AD9851 only: the AD9850 uses this bit for factory tests

synth_data      udata
synth_word      res 4
control         res 1
synth_chip      res 1

synth_bank1     udata
synth_clock     res 4
synth_scale     res 5

set_byte macro  value, to
        movlw   value
        movwf   to
        endm

synth_code      code
synth_start:
        movlw   '0'
        movwf   synth_chip
        clrf    control
        btfss   PORTB, J1
        goto    is_9851
        banksel synth_clock
        set_byte AD9850_CLOCK_0, synth_clock
        set_byte AD9850_CLOCK_1, synth_clock + 1
        set_byte AD9850_CLOCK_2, synth_clock + 2
        set_byte AD9850_CLOCK_3, synth_clock + 3
        set_byte AD9850_SCALE_0, synth_scale
        set_byte AD9850_SCALE_1, synth_scale + 1
        set_byte AD9850_SCALE_2, synth_scale + 2
        set_byte AD9850_SCALE_3, synth_scale + 3
        set_byte AD9850_SCALE_4, synth_scale + 4
        goto    serial_mode
is_9851:
        incf    synth_chip, F
        btfss   PORTB, J2
        goto    is_9851_x6
        banksel synth_clock
        set_byte AD9851_CLOCK_0, synth_clock
        set_byte AD9851_CLOCK_1, synth_clock + 1
        set_byte AD9851_CLOCK_2, synth_clock + 2
        set_byte AD9851_CLOCK_3, synth_clock + 3
        set_byte AD9851_SCALE_0, synth_scale
        set_byte AD9851_SCALE_1, synth_scale + 1
        set_byte AD9851_SCALE_2, synth_scale + 2
        set_byte AD9851_SCALE_3, synth_scale + 3
        set_byte AD9851_SCALE_4, synth_scale + 4
        goto    serial_mode
is_9851_x6:
        bsf     control, MULTIPLIER
        banksel synth_clock
        set_byte AD9851_X6_CLOCK_0, synth_clock
        set_byte AD9851_X6_CLOCK_1, synth_clock + 1
        set_byte AD9851_X6_CLOCK_2, synth_clock + 2
        set_byte AD9851_X6_CLOCK_3, synth_clock + 3
        set_byte AD9851_X6_SCALE_0, synth_scale
        set_byte AD9851_X6_SCALE_1, synth_scale + 1
        set_byte AD9851_X6_SCALE_2, synth_scale + 2
        set_byte AD9851_X6_SCALE_3, synth_scale + 3
        set_byte AD9851_X6_SCALE_4, synth_scale + 4

; After a 10 us RESET, one W_CLK pulse and one FQ_UD pulse make the chip read the mode from its wired inputs D0 to D2.
serial_mode:
        banksel PORTD
        movlw   1 << RESET
        movwf   PORTD
        movlw   17
        addlw   -1
        skpz
        goto    $-2
        clrf    PORTD
        movlw   1 << W_CLK
        movwf   PORTD
        clrf    PORTD
        call    synth_update
                                        ; load a full word immediately to overwrite the mode pattern
synth_off:
        clrf    synth_word
        clrf    synth_word + 1
        clrf    synth_word + 2
        clrf    synth_word + 3
        bsf     control, POWER_DOWN
        call    synth_load
        bcf     control, POWER_DOWN
synth_update:
        movlw   1 << FQ_UD
        movwf   PORTD
        clrf    PORTD
        return

; Shifts one bit in 5 cycles; W is 0 before and after. Because bsf first reads the port, the instruction before it gives
; the data pin time to settle.
shift   macro   byte, bit
        btfsc   byte, bit
        movlw   1 << SERIAL
        movwf   PORTD                   ; data, W_CLK low
        movlw   0
        bsf     PORTD, W_CLK
        endm

shift_byte macro byte
        shift   byte, 0
        shift   byte, 1
        shift   byte, 2
        shift   byte, 3
        shift   byte, 4
        shift   byte, 5
        shift   byte, 6
        shift   byte, 7
        endm

synth_load:
        movlw   0
        shift_byte synth_word
        shift_byte synth_word + 1
        shift_byte synth_word + 2
        shift_byte synth_word + 3
        shift   control, 0
        shift   control, 1
        shift   control, 2
        movwf   PORTD
        movlw   1 << W_CLK              ; the five phase bits: zeros
        movwf   PORTD
        clrf    PORTD
        movwf   PORTD
        clrf    PORTD
        movwf   PORTD
        clrf    PORTD
        movwf   PORTD
        clrf    PORTD
        movwf   PORTD
        clrf    PORTD
        return

        end
