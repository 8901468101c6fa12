-- Converts an IEEE double to an IEEE single: nearest, to even between two, whatever roundconvert is. What is below the
-- smallest normal number after rounding is zero, what is too large is infinite; nan is 7FC00000. Subnormal is zero.
--   cycle 1  decide:  the exponent with the single's bias, whether to round up, whether the result is in range
--   cycle 2  pack:    one carry chain through fraction and exponent; the fields of a special result
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
  constant bias_difference : positive := 896;                      -- a multiple of half the single's exponents
  constant greatest        : positive := bias_difference + 254;    -- exponent of the largest singles

  subtype exponent_field is std_logic_vector(ieee_exponent - 1 downto 0);
  subtype fraction_field is std_logic_vector(fraction_bits - 1 downto 0);

  -- decide
  signal exponent_in : std_logic_vector(double_exponent - 1 downto 0);
  signal fraction_in : std_logic_vector(double_fraction - 1 downto 0);
  signal kept_d, kept : fraction_field;
  signal up_d, up : std_logic_vector(0 downto 0);
  signal carries, nan, infinite, flushed : std_logic;
  signal marks_d, marks : std_logic_vector(3 downto 0);   -- sign, nan, infinite or nan, zero
  signal exponent_d, exponent : exponent_field;

  -- pack
  signal joined, rounded : std_logic_vector(ieee_exponent + fraction_bits - 1 downto 0);
  signal special : std_logic;
  signal packed_exponent : exponent_field;
  signal packed_fraction : fraction_field;
  signal packed_d : std_logic_vector(31 downto 0);
begin
  assert roundconvert <= 1 report "xfc_castdtof: roundconvert is 0 or 1" severity failure;
  assert mantissa = 32 or mantissa = 36 report "xfc_castdtof: mantissa is 32 or 36" severity failure;

  -- decide
  exponent_in <= aa(63 downto 53);
  fraction_in <= aa(double_fraction downto 1);
  kept_d <= fraction_in(double_fraction - 1 downto dropped_bits);
  round_even : entity work.xfc_round_even generic map (dropped_bits)
    port map (fraction_in(dropped_bits), fraction_in(dropped_bits - 1 downto 0), '0', up_d(0));
  carries <= up_d(0) when unsigned(not kept_d) = 0 else '0';   -- into the exponent
  nan <= '1' when unsigned(not exponent_in) = 0 and unsigned(fraction_in) /= 0 else '0';
  infinite <= '1' when unsigned(exponent_in) > greatest or
                       (unsigned(exponent_in) = greatest and carries = '1') else '0';   -- or nan
  flushed <= '1' when unsigned(exponent_in) < bias_difference or
                      (unsigned(exponent_in) = bias_difference and carries = '0') else '0';
  marks_d <= (aa(64) and not nan) & nan & infinite & flushed;
  exponent_d <= not exponent_in(ieee_exponent - 1) & exponent_in(ieee_exponent - 2 downto 0);

  decide_0 : entity work.xfc_register generic map (4, 1) port map (sysclk, enable, marks_d, marks);
  decide_1 : entity work.xfc_register generic map (ieee_exponent, 1) port map (sysclk, enable, exponent_d, exponent);
  decide_2 : entity work.xfc_register generic map (fraction_bits, 1) port map (sysclk, enable, kept_d, kept);
  decide_3 : entity work.xfc_register generic map (1, 1) port map (sysclk, enable, up_d, up);

  -- pack
  joined <= exponent & kept;
  rounded <= std_logic_vector(unsigned(joined) + unsigned(up));
  special <= marks(1) or marks(0);
  packed_exponent <= (others => '1') when marks(1) = '1' else
                     (others => '0') when marks(0) = '1' else
                     rounded(ieee_exponent + fraction_bits - 1 downto fraction_bits);
  packed_fraction <= marks(2) & (fraction_bits - 2 downto 0 => '0') when special = '1' else
                     rounded(fraction_bits - 1 downto 0);
  packed_d <= marks(3) & packed_exponent & packed_fraction;

  pack_0 : entity work.xfc_register generic map (32, 1) port map (sysclk, enable, packed_d, cc);
end rtl;
