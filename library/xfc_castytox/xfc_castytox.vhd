-- Converts a YDouble value in adder form to XFloat in adder form: nearest, to even between two, in the place that the
-- exponent gives the lowest bit, for there is no normalization. What has used guard bits just below the range of
-- exponents is shifted into it; below that it is zero, from exponent 960 on infinite, but a mantissa of zero is zero.
-- Rounds whatever roundconvert is.
--   cycle 1  align:  the exponent with the single's bias; shift into the range; whether to round up
--   cycle 2  round:  one carry chain; halve when the guard bits are used up; flags
-- Latency 2 cycles.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_castytox is
  generic (roundconvert : natural; mantissa : positive);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(77 downto 1);
        aasat, aazip, aanan : in std_logic;
        cc : out std_logic_vector(mantissa + 10 downto 1);
        ccsat, cczip, ccnan : out std_logic);
end xfc_castytox;

architecture rtl of xfc_castytox is
  constant exponent_bits   : positive := 10;
  constant double_exponent : positive := 13;
  constant double_mantissa : positive := 64;
  constant dropped_bits    : positive := double_mantissa - mantissa;
  constant bias_difference : positive := 896;

  subtype exponent_field is std_logic_vector(double_exponent - 1 downto 0);
  subtype mark_field is std_logic_vector(3 downto 0);                           -- sign, nan, zip, sat

  -- align
  signal exponent_in, exponent_d, exponent : exponent_field;
  signal mantissa_in, aligned : std_logic_vector(double_mantissa - 1 downto 0);
  signal just_below, zip, lost : std_logic;
  signal distance : std_logic_vector(2 downto 0);
  signal dropped : std_logic_vector(dropped_bits downto 0);
  signal kept : std_logic_vector(mantissa - 1 downto 0);
  signal up_d, up : std_logic_vector(0 downto 0);
  signal marks_d, marks : mark_field;

  -- round
  signal sum, result_d : std_logic_vector(mantissa - 1 downto 0);
  signal halve : std_logic_vector(0 downto 0);
  signal following : exponent_field;
  signal too_large : std_logic;
  signal value_d : std_logic_vector(mantissa + exponent_bits - 1 downto 0);
  signal sign : std_logic;
  signal flags_d, flags : std_logic_vector(2 downto 0);
begin
  assert roundconvert <= 1 report "xfc_castytox: roundconvert is 0 or 1" severity failure;
  assert mantissa = 32 or mantissa = 36 report "xfc_castytox: mantissa is 32 or 36" severity failure;

  -- align: exponents from 893 to 896 become 1
  exponent_in <= aa(double_exponent downto 1);
  mantissa_in <= aa(double_mantissa + double_exponent downto double_exponent + 1);
  just_below <= '1' when unsigned(exponent_in) >= 893 and unsigned(exponent_in) <= bias_difference else '0';
  distance <= std_logic_vector(to_unsigned(1, 3) - unsigned(exponent_in(2 downto 0))) when just_below = '1' else "000";
  exponent_d <= std_logic_vector(to_unsigned(1, double_exponent)) when just_below = '1' else
                std_logic_vector(unsigned(exponent_in) - bias_difference);
  zip <= '1' when aazip = '1' or unsigned(exponent_in) < 893 or unsigned(mantissa_in) = 0 else '0';
  shift_align : entity work.xfc_shift_right generic map (double_mantissa, 3, 1)
    port map (mantissa_in, distance, '0', aligned, lost);
  dropped <= aligned(dropped_bits - 1 downto 0) & lost;
  round_even : entity work.xfc_round_even generic map (dropped_bits + 1)
    port map (aligned(dropped_bits), dropped, '0', up_d(0));
  marks_d <= mantissa_in(double_mantissa - 1) & aanan & zip & aasat;

  align_0 : entity work.xfc_register generic map (double_exponent, 1)
    port map (sysclk, enable, exponent_d, exponent);
  align_1 : entity work.xfc_register generic map (mantissa, 1)
    port map (sysclk, enable, aligned(double_mantissa - 1 downto dropped_bits), kept);
  align_2 : entity work.xfc_register generic map (1, 1) port map (sysclk, enable, up_d, up);
  align_3 : entity work.xfc_register generic map (4, 1) port map (sysclk, enable, marks_d, marks);

  -- round: exponents from 960 on are infinite; with a flag the sign is the operand's
  sum <= std_logic_vector(unsigned(kept) + unsigned(up));
  halve(0) <= sum(mantissa - 1) and not kept(mantissa - 1);
  following <= std_logic_vector(unsigned(exponent) + unsigned(halve));
  too_large <= '1' when unsigned(following) >= 960 else '0';
  flags_d <= marks(2) & (not marks(2) and not marks(0) and marks(1)) &
             (not marks(2) and (marks(0) or (too_large and not marks(1))));
  sign <= marks(3) when flags_d /= "000" else sum(mantissa - 1) and not halve(0);
  result_d <= sign & (sum(mantissa - 2) or halve(0)) & sum(mantissa - 3 downto 0);
  value_d <= result_d & following(exponent_bits - 1 downto 0);

  round_0 : entity work.xfc_register generic map (mantissa + exponent_bits, 1)
    port map (sysclk, enable, value_d, cc);
  round_1 : entity work.xfc_register generic map (3, 1) port map (sysclk, enable, flags_d, flags);

  ccsat <= flags(0);
  cczip <= flags(1);
  ccnan <= flags(2);
end rtl;
