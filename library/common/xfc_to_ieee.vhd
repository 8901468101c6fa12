-- Makes an IEEE number of a two's complement mantissa and an exponent: nearest, to even between two. A mantissa of
-- 0100... (behind the sign) has the exponent field exponent + adjust. What is below the smallest normal number after
-- rounding is zero, what is too large is infinite; nan goes before sat, sat before zero.
--   step complement:  ones' complement of a negative mantissa, one low unit short of its magnitude
--   step bytes:       how many bytes in front are empty
--   step coarse:      shift left by so many bytes
--   step bits:        zeros in front of the first byte
--   step fine:        shift left by so many bits
--   step decide:      whether to round up; the exponent of the leading one; nothing but zeros is zero
--   step round:       lower half of the fraction, for rounding and for the missing unit
--   step carry:       upper half of the fraction and the exponent
--   step range:       too small, too large
--   step pack:        the fields
-- Registers behind bytes, bits, decide, carry and pack make 5 cycles; a sixth stands behind coarse, then fine, round,
-- complement, range.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_to_ieee is
  generic (mantissa_bits : positive;
           adjust        : integer;
           ieee_exponent : positive;
           fraction_bits : positive;
           latency       : positive);   -- cycles, 5 to 10
  port (sysclk, enable : in std_logic;
        mantissa : in std_logic_vector(mantissa_bits - 1 downto 0);
        exponent : in std_logic_vector(12 downto 0);
        flags    : in std_logic_vector(2 downto 0);                  -- nan, zero, sat
        result   : out std_logic_vector(ieee_exponent + fraction_bits downto 0));
end xfc_to_ieee;

architecture rtl of xfc_to_ieee is
  constant exponent_bits  : positive := 13;
  constant wide_bits      : positive := exponent_bits + 2;          -- exponent below zero and above the field
  constant magnitude_bits : positive := mantissa_bits - 1;
  constant padded         : positive := 8 * (magnitude_bits / 8 + 1);

  function bits_behind return positive is
  begin
    if fraction_bits + 3 > padded + 1 then return fraction_bits + 3 - padded; else return 1; end if;
  end bits_behind;
  constant extension    : positive := bits_behind;
  constant dropped_bits : positive := padded + extension - 1 - fraction_bits;
  constant low_bits     : positive := fraction_bits / 2;
  constant high_bits    : positive := fraction_bits - low_bits;
  constant coarse_border     : natural := latency / 6;
  constant fine_border       : natural := latency / 7;
  constant round_border      : natural := latency / 8;
  constant complement_border : natural := latency / 9;
  constant range_border      : natural := latency / 10;
  constant adjustment : unsigned(wide_bits - 1 downto 0) := unsigned(to_signed(adjust, wide_bits));
  constant infinity   : positive := 2 ** ieee_exponent - 1;

  subtype wide_exponent is std_logic_vector(wide_bits - 1 downto 0);            -- two's complement
  subtype magnitude_field is std_logic_vector(magnitude_bits - 1 downto 0);
  subtype fraction_field is std_logic_vector(fraction_bits - 1 downto 0);
  subtype side_field is std_logic_vector(exponent_bits + 3 downto 0);           -- exponent and marks
  subtype mark_field is std_logic_vector(3 downto 0);                           -- sign, nan, zip, sat

  -- complement
  signal sign : std_logic;
  signal magnitude_d, magnitude : magnitude_field;
  signal side_d, side : side_field;

  -- bytes, coarse, bits, fine
  signal normal : std_logic_vector(padded - 1 downto 0);
  signal zeros : std_logic_vector(5 downto 0);
  signal fine_side : side_field;

  -- decide
  signal fine_sign : std_logic;
  signal behind : std_logic_vector(extension - 1 downto 0);
  signal extended : std_logic_vector(padded + extension - 1 downto 0);
  signal up_d, up : std_logic_vector(0 downto 0);
  signal kept : fraction_field;
  signal leading_d, leading : wide_exponent;
  signal decide_marks_d, decide_marks : mark_field;

  -- round
  signal low_d, low : std_logic_vector(low_bits downto 0);
  signal high_d, high : std_logic_vector(wide_bits + high_bits - 1 downto 0);
  signal round_marks : mark_field;

  -- carry
  signal high_sum : std_logic_vector(wide_bits + high_bits - 1 downto 0);
  signal rounded_d, rounded : fraction_field;
  signal rounded_exponent : wide_exponent;
  signal carry_marks : mark_field;

  -- range
  signal too_small, too_large, flushed_d, ones_d : std_logic;
  signal range_marks_d, range_marks : mark_field;                               -- sign, nan, flushed, ones
  signal range_fraction : fraction_field;
  signal range_exponent : std_logic_vector(ieee_exponent - 1 downto 0);

  -- pack
  signal set_by_mark : std_logic;
  signal packed_d : std_logic_vector(ieee_exponent + fraction_bits downto 0);
begin
  assert latency >= 5 and latency <= 10 report "xfc_to_ieee: latency is 5 to 10" severity failure;

  -- complement
  sign <= mantissa(mantissa_bits - 1);
  magnitude_d <= not mantissa(magnitude_bits - 1 downto 0) when sign = '1' else mantissa(magnitude_bits - 1 downto 0);
  side_d <= exponent & sign & flags;

  complement_0 : entity work.xfc_register generic map (magnitude_bits, complement_border)
    port map (sysclk, enable, magnitude_d, magnitude);
  complement_1 : entity work.xfc_register generic map (exponent_bits + 4, complement_border)
    port map (sysclk, enable, side_d, side);

  -- bytes, coarse, bits, fine: a negative mantissa is followed by ones, for the missing unit belongs to its lowest bit
  normalize : entity work.xfc_normalize
    generic map (magnitude_bits, exponent_bits + 4, 1, coarse_border, 1, fine_border)
    port map (sysclk, enable, magnitude, side(3), side, normal, zeros, fine_side);

  -- decide
  fine_sign <= fine_side(3);
  behind <= (others => fine_sign);
  extended <= normal & behind;
  round_even : entity work.xfc_round_even generic map (dropped_bits)
    port map (extended(dropped_bits), extended(dropped_bits - 1 downto 0), fine_sign, up_d(0));
  leading_d <= std_logic_vector(resize(unsigned(fine_side(exponent_bits + 3 downto 4)), wide_bits) + adjustment -
                                unsigned(zeros));
  decide_marks_d <= fine_side(3 downto 2) & (fine_side(1) or not normal(padded - 1)) & fine_side(0);

  decide_0 : entity work.xfc_register generic map (1, 1) port map (sysclk, enable, up_d, up);
  decide_1 : entity work.xfc_register generic map (fraction_bits, 1)
    port map (sysclk, enable, extended(dropped_bits + fraction_bits - 1 downto dropped_bits), kept);
  decide_2 : entity work.xfc_register generic map (wide_bits, 1) port map (sysclk, enable, leading_d, leading);
  decide_3 : entity work.xfc_register generic map (4, 1) port map (sysclk, enable, decide_marks_d, decide_marks);

  -- round
  low_d <= std_logic_vector(resize(unsigned(kept(low_bits - 1 downto 0)), low_bits + 1) + unsigned(up));
  high_d <= leading & kept(fraction_bits - 1 downto low_bits);

  round_0 : entity work.xfc_register generic map (low_bits + 1, round_border) port map (sysclk, enable, low_d, low);
  round_1 : entity work.xfc_register generic map (wide_bits + high_bits, round_border)
    port map (sysclk, enable, high_d, high);
  round_2 : entity work.xfc_register generic map (4, round_border)
    port map (sysclk, enable, decide_marks, round_marks);

  -- carry
  high_sum <= std_logic_vector(unsigned(high) + unsigned(low(low_bits downto low_bits)));
  rounded_d <= high_sum(high_bits - 1 downto 0) & low(low_bits - 1 downto 0);

  carry_0 : entity work.xfc_register generic map (fraction_bits, 1) port map (sysclk, enable, rounded_d, rounded);
  carry_1 : entity work.xfc_register generic map (wide_bits, 1)
    port map (sysclk, enable, high_sum(wide_bits + high_bits - 1 downto high_bits), rounded_exponent);
  carry_2 : entity work.xfc_register generic map (4, 1) port map (sysclk, enable, round_marks, carry_marks);

  -- range
  too_small <= '1' when signed(rounded_exponent) <= 0 else '0';
  too_large <= '1' when signed(rounded_exponent) >= infinity else '0';
  flushed_d <= not carry_marks(2) and not carry_marks(0) and (carry_marks(1) or too_small);
  ones_d <= carry_marks(2) or carry_marks(0) or (too_large and not carry_marks(1));
  range_marks_d <= (carry_marks(3) and not carry_marks(2)) & carry_marks(2) & flushed_d & ones_d;

  range_0 : entity work.xfc_register generic map (fraction_bits, range_border)
    port map (sysclk, enable, rounded, range_fraction);
  range_1 : entity work.xfc_register generic map (ieee_exponent, range_border)
    port map (sysclk, enable, rounded_exponent(ieee_exponent - 1 downto 0), range_exponent);
  range_2 : entity work.xfc_register generic map (4, range_border)
    port map (sysclk, enable, range_marks_d, range_marks);

  -- pack
  set_by_mark <= range_marks(1) or range_marks(0);
  packed_d(ieee_exponent + fraction_bits) <= range_marks(3);
  packed_d(ieee_exponent + fraction_bits - 1 downto fraction_bits) <=
    (others => '0') when range_marks(1) = '1' else
    (others => '1') when range_marks(0) = '1' else range_exponent;
  packed_d(fraction_bits - 1) <= range_marks(2) or (range_fraction(fraction_bits - 1) and not set_by_mark);
  packed_d(fraction_bits - 2 downto 0) <= (others => '0') when set_by_mark = '1' else
                                          range_fraction(fraction_bits - 2 downto 0);

  pack_0 : entity work.xfc_register generic map (ieee_exponent + fraction_bits + 1, 1)
    port map (sysclk, enable, packed_d, result);
end rtl;
