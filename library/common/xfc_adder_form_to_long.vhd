-- Converts a value in an internal adder form to an integer of 32 bits, toward zero as C does. Out of range it is the
-- nearest end, nan is 0. Exponent field 0 is zero.
--   step place:     a window for the integer's bits and 31 behind them, shifted by no, one or two words
--   step coarse:    shift right by whole bytes
--   step fine:      shift right by single bits, with what goes over the edge
--   step truncate:  toward zero is one more for a negative number that lost bits
--   step settle:    the ends of the range
-- 2 cycles with a register behind fine and settle, and one for each further border.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_adder_form_to_long is
  generic (exponent_bits          : positive;
           exponent_without_shift : positive;   -- with it the mantissa's lowest bit is worth 2 ** 31
           place_border           : natural;    -- 1: a register behind that step
           coarse_border          : natural;
           truncate_border        : natural);
  port (sysclk, enable : in std_logic;
        mantissa_in : in std_logic_vector(63 downto 0);
        exponent    : in std_logic_vector(exponent_bits - 1 downto 0);
        flags       : in std_logic_vector(2 downto 0);   -- nan, zip, sat
        settled     : out std_logic_vector(31 downto 0));
end xfc_adder_form_to_long;

architecture rtl of xfc_adder_form_to_long is
  constant mantissa_bits : positive := 64;
  constant width         : positive := 32;
  constant window_bits   : positive := 2 * width - 1;

  subtype window_field is std_logic_vector(window_bits - 1 downto 0);
  subtype word_field is std_logic_vector(width - 1 downto 0);
  subtype mark_field is std_logic_vector(2 downto 0);                           -- sign, zero, beyond the range
  constant no_bits  : word_field := (others => '0');
  constant all_bits : word_field := (others => '1');
  constant no_front  : std_logic_vector(mantissa_bits - width downto 0) := (others => '0');

  -- place
  signal distance : std_logic_vector(exponent_bits downto 0);                   -- two's complement
  signal words : unsigned(exponent_bits - 5 downto 0);
  signal signs, behind : std_logic_vector(width - 1 downto 0);
  signal front_in : std_logic_vector(mantissa_bits - width downto 0);
  signal fits, beyond, zero : std_logic;
  signal window_d, window : window_field;
  signal lost_d, lost : std_logic_vector(0 downto 0);
  signal rest : std_logic_vector(4 downto 0);
  signal marks_d, marks : mark_field;

  -- coarse
  signal coarse_d, coarse : window_field;
  signal coarse_lost_d, coarse_lost : std_logic_vector(0 downto 0);
  signal fine_rest : std_logic_vector(2 downto 0);
  signal coarse_marks : mark_field;

  -- fine
  signal fine_d, shifted : window_field;
  signal fine_lost : std_logic;
  signal up_d, up : std_logic_vector(0 downto 0);
  signal fine_marks : mark_field;

  -- truncate
  signal whole_d, whole, front : word_field;
  signal in_range : std_logic;
  signal truncate_marks_d, truncate_marks : mark_field;

  -- settle
  signal settled_d : word_field;
begin
  -- place
  distance <= std_logic_vector(to_unsigned(exponent_without_shift, exponent_bits + 1) -
                               resize(unsigned(exponent), exponent_bits + 1));
  words <= unsigned(distance(exponent_bits downto 5));
  signs <= (others => mantissa_in(mantissa_bits - 1));
  behind <= (others => '0');
  window_d <= mantissa_in(width - 1 downto 0) & behind(width - 2 downto 0) when words = 0 else
              mantissa_in(mantissa_bits - 1 downto 1) when words = 1 else
              signs & mantissa_in(mantissa_bits - 1 downto width + 1) when words = 2 else
              (others => '0');
  lost_d <= mantissa_in(0 downto 0) when words = 1 else
            "1" when words = 2 and unsigned(mantissa_in(width downto 0)) /= 0 else "0";
  front_in <= mantissa_in(mantissa_bits - 1 downto width - 1);
  fits <= '1' when front_in = no_front or (not front_in) = no_front else '0';
  beyond <= '1' when flags(0) = '1' or (distance(exponent_bits) = '1' and unsigned(mantissa_in) /= 0) or
                     (words = 0 and fits = '0') else '0';
  zero <= '1' when flags(2) = '1' or (flags(0) = '0' and (flags(1) = '1' or unsigned(exponent) = 0)) else '0';
  marks_d <= mantissa_in(mantissa_bits - 1) & zero & beyond;

  place_0 : entity work.xfc_register generic map (window_bits, place_border) port map (sysclk, enable, window_d, window);
  place_1 : entity work.xfc_register generic map (1, place_border) port map (sysclk, enable, lost_d, lost);
  place_2 : entity work.xfc_register generic map (5, place_border) port map (sysclk, enable, distance(4 downto 0), rest);
  place_3 : entity work.xfc_register generic map (3, place_border) port map (sysclk, enable, marks_d, marks);

  -- coarse
  shift_coarse : entity work.xfc_shift_right generic map (window_bits, 2, 8)
    port map (window, rest(4 downto 3), lost(0), coarse_d, coarse_lost_d(0));

  coarse_0 : entity work.xfc_register generic map (window_bits, coarse_border)
    port map (sysclk, enable, coarse_d, coarse);
  coarse_1 : entity work.xfc_register generic map (1, coarse_border)
    port map (sysclk, enable, coarse_lost_d, coarse_lost);
  coarse_2 : entity work.xfc_register generic map (3, coarse_border)
    port map (sysclk, enable, rest(2 downto 0), fine_rest);
  coarse_3 : entity work.xfc_register generic map (3, coarse_border) port map (sysclk, enable, marks, coarse_marks);

  -- fine
  shift_fine : entity work.xfc_shift_right generic map (window_bits, 3, 1)
    port map (coarse, fine_rest, coarse_lost(0), fine_d, fine_lost);
  up_d(0) <= coarse_marks(2) and fine_lost;

  fine_0 : entity work.xfc_register generic map (window_bits, 1) port map (sysclk, enable, fine_d, shifted);
  fine_1 : entity work.xfc_register generic map (1, 1) port map (sysclk, enable, up_d, up);
  fine_2 : entity work.xfc_register generic map (3, 1) port map (sysclk, enable, coarse_marks, fine_marks);

  -- truncate
  whole_d <= std_logic_vector(unsigned(shifted(width - 1 downto 0)) + unsigned(up));
  front <= shifted(window_bits - 1 downto width - 1);
  in_range <= '1' when front = no_bits or front = all_bits else '0';
  truncate_marks_d <= fine_marks(2 downto 1) & (fine_marks(0) or not in_range);

  truncate_0 : entity work.xfc_register generic map (width, truncate_border)
    port map (sysclk, enable, whole_d, whole);
  truncate_1 : entity work.xfc_register generic map (3, truncate_border)
    port map (sysclk, enable, truncate_marks_d, truncate_marks);

  -- settle
  settled_d(width - 1) <= not truncate_marks(1) and truncate_marks(2) when truncate_marks(1 downto 0) /= "00" else
                          whole(width - 1);
  settled_d(width - 2 downto 0) <= (others => '0') when truncate_marks(1) = '1' else
                                   whole(width - 2 downto 0) when truncate_marks(0) = '0' else
                                   (others => '0') when truncate_marks(2) = '1' else (others => '1');

  settle_0 : entity work.xfc_register generic map (width, 1) port map (sysclk, enable, settled_d, settled);
end rtl;
