-- Converts an IEEE double to XFloat: for an adder (target 0), a multiplier (1) or a divider (2). Nearest, to even
-- between two, whatever roundconvert is. What is below exponent 1 after rounding is zero, from 960 on it is infinite; a
-- subnormal number is zero.
--   step decide:      flags, the exponent with the single's bias, whether to round up
--   step round:       one carry chain through fraction and exponent
--   step range:       zero or infinite; ones' complement of a negative number
--   step complement:  one more makes it the two's complement; a divider takes sign and magnitude
--   step deliver:     the cycle more of doublespeed and roundconvert together
-- Latency 4 + doublespeed * roundconvert cycles.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity castdtox is
  generic (target : natural; roundconvert : natural; doublespeed : natural; mantissa : positive := 32);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(64 downto 1);
        cc : out std_logic_vector(mantissa + 10 downto 1);
        ccsat, cczip, ccnan : out std_logic);
end castdtox;

architecture rtl of castdtox is
  function signs_in_front return positive is
  begin
    if target = 0 then return 5; else return 1; end if;   -- the adder has four guard bits
  end signs_in_front;
  constant exponent_bits   : positive := 10;
  constant double_exponent : positive := 11;
  constant double_fraction : positive := 52;
  constant signs           : positive := signs_in_front;
  constant fraction_bits   : positive := mantissa - signs - 1;
  constant dropped_bits    : positive := double_fraction - fraction_bits;
  constant wide_bits       : positive := double_exponent + 1;      -- exponent below zero and above the field
  constant bias_difference : positive := 896;
  constant deliver_border  : natural := doublespeed * roundconvert;

  subtype wide_exponent is std_logic_vector(wide_bits - 1 downto 0);            -- two's complement
  subtype fraction_field is std_logic_vector(fraction_bits - 1 downto 0);
  subtype significand_field is std_logic_vector(fraction_bits downto 0);
  subtype value_field is std_logic_vector(mantissa + exponent_bits - 1 downto 0);
  subtype mark_field is std_logic_vector(3 downto 0);                           -- sign, nan, zip, sat

  -- decide
  signal exponent_in : std_logic_vector(double_exponent - 1 downto 0);
  signal fraction_in : std_logic_vector(double_fraction - 1 downto 0);
  signal exponent_is_zero, exponent_is_ones, fraction_is_zero : std_logic;
  signal marks_d, marks : mark_field;
  signal exponent_d, exponent : wide_exponent;
  signal kept : fraction_field;
  signal up_d, up : std_logic_vector(0 downto 0);

  -- round
  signal rounded_d : std_logic_vector(wide_bits + fraction_bits - 1 downto 0);
  signal leading : wide_exponent;
  signal fraction : fraction_field;
  signal round_marks : mark_field;

  -- range
  signal too_small, too_large : std_logic;
  signal range_marks_d, range_marks : mark_field;
  signal significand_d, significand : significand_field;
  signal range_exponent : std_logic_vector(exponent_bits - 1 downto 0);

  -- complement
  signal increment : unsigned(0 downto 0);
  signal sum : significand_field;
  signal front : std_logic_vector(signs - 1 downto 0);
  signal value_d, value : value_field;
  signal flags, flags_cc : std_logic_vector(2 downto 0);
begin
  assert target <= 2 report "castdtox: target is 0, 1 or 2" severity failure;
  assert roundconvert <= 1 report "castdtox: roundconvert is 0 or 1" severity failure;
  assert doublespeed <= 1 report "castdtox: doublespeed is 0 or 1" severity failure;
  assert mantissa = 32 or mantissa = 36 report "castdtox: mantissa is 32 or 36" severity failure;

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

  -- round
  rounded_d <= std_logic_vector(unsigned(exponent) & unsigned(kept) + unsigned(up));

  round_0 : entity work.xfc_register generic map (wide_bits, 1)
    port map (sysclk, enable, rounded_d(wide_bits + fraction_bits - 1 downto fraction_bits), leading);
  round_1 : entity work.xfc_register generic map (fraction_bits, 1)
    port map (sysclk, enable, rounded_d(fraction_bits - 1 downto 0), fraction);
  round_2 : entity work.xfc_register generic map (4, 1) port map (sysclk, enable, marks, round_marks);

  -- range: exponents from 960 on are infinite
  too_small <= '1' when signed(leading) <= 0 else '0';
  too_large <= '1' when signed(leading) >= 960 else '0';
  range_marks_d <= round_marks(3 downto 2) &
                   (not round_marks(2) and not round_marks(0) and (round_marks(1) or too_small)) &
                   (not round_marks(2) and (round_marks(0) or (too_large and not round_marks(1))));
  significand_d <= not ('1' & fraction) when target /= 2 and round_marks(3) = '1' else '1' & fraction;

  range_0 : entity work.xfc_register generic map (exponent_bits, 1)
    port map (sysclk, enable, leading(exponent_bits - 1 downto 0), range_exponent);
  range_1 : entity work.xfc_register generic map (fraction_bits + 1, 1)
    port map (sysclk, enable, significand_d, significand);
  range_2 : entity work.xfc_register generic map (4, 1) port map (sysclk, enable, range_marks_d, range_marks);

  -- complement: the significand is never zero, so nothing is carried into the sign
  increment <= unsigned(range_marks(3 downto 3)) when target /= 2 else "0";
  sum <= std_logic_vector(unsigned(significand) + increment);
  front <= (others => range_marks(3));
  value_d <= front & sum & range_exponent;

  complement_0 : entity work.xfc_register generic map (mantissa + exponent_bits, 1)
    port map (sysclk, enable, value_d, value);
  complement_1 : entity work.xfc_register generic map (3, 1)
    port map (sysclk, enable, range_marks(2 downto 0), flags);

  -- deliver
  deliver_0 : entity work.xfc_register generic map (mantissa + exponent_bits, deliver_border)
    port map (sysclk, enable, value, cc);
  deliver_1 : entity work.xfc_register generic map (3, deliver_border) port map (sysclk, enable, flags, flags_cc);

  ccsat <= flags_cc(0);
  cczip <= flags_cc(1);
  ccnan <= flags_cc(2);
end rtl;
