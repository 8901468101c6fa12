-- Converts an IEEE double to an IEEE single: nearest, to even between two, whatever roundconvert is. What is below the
-- smallest normal number after rounding is zero, what is too large is infinite; nan is 7FC00000. Subnormal is zero.
--   cycle 1  decide:  flags, the exponent with the single's bias, whether to round up
--   cycle 2  pack:    one carry chain through fraction and exponent; range and flags
-- Latency 2 cycles. mantissa changes nothing.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_castdtof is
  generic (roundconvert : natural; mantissa : positive := 32);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(64 downto 1);
        cc : out std_logic_vector(32 downto 1));
end xfc_castdtof;

architecture rtl of xfc_castdtof is
  constant double_exponent : positive := 11;
  constant double_fraction : positive := 52;
  constant ieee_exponent   : positive := 8;
  constant fraction_bits   : positive := 23;
  constant dropped_bits    : positive := double_fraction - fraction_bits;
  constant wide_bits       : positive := double_exponent + 1;      -- exponent below zero and above the field
  constant bias_difference : positive := 896;

  subtype wide_exponent is std_logic_vector(wide_bits - 1 downto 0);            -- two's complement

  -- decide
  signal exponent_in : std_logic_vector(double_exponent - 1 downto 0);
  signal fraction_in : std_logic_vector(double_fraction - 1 downto 0);
  signal exponent_is_zero, exponent_is_ones, fraction_is_zero : std_logic;
  signal marks_d, marks : std_logic_vector(3 downto 0);                         -- sign, nan, zip, sat
  signal exponent_d, exponent : wide_exponent;
  signal kept : std_logic_vector(fraction_bits - 1 downto 0);
  signal up_d, up : std_logic_vector(0 downto 0);

  -- pack
  signal rounded : std_logic_vector(wide_bits + fraction_bits - 1 downto 0);
  signal rounded_exponent : wide_exponent;
  signal too_small, too_large, flushed, infinite : std_logic;
  signal packed_d : std_logic_vector(31 downto 0);
begin
  assert roundconvert <= 1 report "xfc_castdtof: roundconvert is 0 or 1" severity failure;
  assert mantissa = 32 or mantissa = 36 report "xfc_castdtof: mantissa is 32 or 36" severity failure;

  -- decide
  exponent_in <= aa(63 downto 53);
  fraction_in <= aa(double_fraction downto 1);
  exponent_is_zero <= '1' when unsigned(exponent_in) = 0 else '0';
  exponent_is_ones <= '1' when unsigned(exponent_in) = 2047 else '0';
  fraction_is_zero <= '1' when unsigned(fraction_in) = 0 else '0';
  marks_d <= aa(64) & (exponent_is_ones and not fraction_is_zero) & exponent_is_zero &
             (exponent_is_ones and fraction_is_zero);
  exponent_d <= std_logic_vector(resize(unsigned(exponent_in), wide_bits) - bias_difference);
  round_even : entity work.xfc_round_even generic map (dropped_bits)
    port map (fraction_in(dropped_bits), fraction_in(dropped_bits - 1 downto 0), '0', up_d(0));

  decide_0 : entity work.xfc_register generic map (4, 1) port map (sysclk, enable, marks_d, marks);
  decide_1 : entity work.xfc_register generic map (wide_bits, 1) port map (sysclk, enable, exponent_d, exponent);
  decide_2 : entity work.xfc_register generic map (fraction_bits, 1)
    port map (sysclk, enable, fraction_in(double_fraction - 1 downto dropped_bits), kept);
  decide_3 : entity work.xfc_register generic map (1, 1) port map (sysclk, enable, up_d, up);

  -- pack
  rounded <= std_logic_vector(unsigned(exponent) & unsigned(kept) + unsigned(up));
  rounded_exponent <= rounded(wide_bits + fraction_bits - 1 downto fraction_bits);
  too_small <= '1' when signed(rounded_exponent) <= 0 else '0';
  too_large <= '1' when signed(rounded_exponent) >= 255 else '0';
  flushed <= not marks(0) and (marks(1) or too_small);
  infinite <= marks(0) or too_large;
  packed_d(31) <= marks(3) and not marks(2);
  packed_d(30 downto fraction_bits) <= (others => '1') when marks(2) = '1' else
                                       (others => '0') when flushed = '1' else
                                       (others => '1') when infinite = '1' else
                                       rounded_exponent(ieee_exponent - 1 downto 0);
  packed_d(fraction_bits - 1) <= '1' when marks(2) = '1' else
                                 rounded(fraction_bits - 1) and not flushed and not infinite;
  packed_d(fraction_bits - 2 downto 0) <= (others => '0') when (marks(2) or flushed or infinite) = '1' else
                                          rounded(fraction_bits - 2 downto 0);

  pack_0 : entity work.xfc_register generic map (32, 1) port map (sysclk, enable, packed_d, cc);
end rtl;
