-- Converts an IEEE double to YDouble: for a multiplier or divider (target 0) or for an adder (target 1). Exact, so
-- roundconvert changes nothing but cycles; a subnormal number is zero.
--   step unpack:   flags, hidden one; ones' complement of a negative number for an adder
--   step convert:  one more makes it the two's complement, lower half; others take sign and magnitude
--   step carry:    upper half; sign bits in front
-- Latency for an adder 1 cycle when neither roundconvert nor outputpipe is 1, else 2 + doublespeed * roundconvert; for
-- others 1 + outputpipe. A register behind carry always, the second behind unpack, the third behind convert.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_castdtoy is
  generic (target : natural; roundconvert : natural; outputpipe : natural; doublespeed : natural;
           synthesize : natural);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(64 downto 1);
        cc : out std_logic_vector(10 * target + 67 downto 1);
        ccsat, cczip, ccnan : out std_logic);
end xfc_castdtoy;

architecture rtl of xfc_castdtoy is
  constant exponent_bits    : positive := 13;
  constant ieee_exponent    : positive := 11;
  constant fraction_bits    : positive := 52;
  constant significand_bits : positive := fraction_bits + 1;
  constant low_bits         : positive := fraction_bits / 2;
  constant high_bits        : positive := significand_bits - low_bits;

  function unpack_registered return natural is
  begin
    if target = 0 or roundconvert = 0 then return outputpipe; else return 1; end if;
  end unpack_registered;
  constant unpack_border  : natural := unpack_registered;
  constant convert_border : natural := target * doublespeed * roundconvert;

  subtype exponent_field is std_logic_vector(ieee_exponent - 1 downto 0);
  subtype significand_field is std_logic_vector(significand_bits - 1 downto 0);
  subtype mark_field is std_logic_vector(3 downto 0);   -- sign, nan, zip, sat

  -- unpack
  signal exponent_is_zero, exponent_is_ones, fraction_is_zero : std_logic;
  signal exponent_d, exponent : exponent_field;
  signal marks_d, marks : mark_field;
  signal significand_d, significand : significand_field;

  -- convert
  signal increment : unsigned(0 downto 0);
  signal convert_exponent : exponent_field;
  signal convert_marks : mark_field;
  signal low_d, low : std_logic_vector(low_bits downto 0);
  signal high : std_logic_vector(high_bits - 1 downto 0);

  -- carry
  signal high_sum : std_logic_vector(high_bits - 1 downto 0);
  signal front : std_logic_vector(4 downto 0);
  signal value_d : std_logic_vector(10 * target + 67 downto 1);
  signal flags : std_logic_vector(2 downto 0);
begin
  assert target <= 1 report "xfc_castdtoy: target is 0 or 1" severity failure;
  assert roundconvert <= 1 report "xfc_castdtoy: roundconvert is 0 or 1" severity failure;
  assert outputpipe <= 1 report "xfc_castdtoy: outputpipe is 0 or 1" severity failure;
  assert doublespeed <= 1 report "xfc_castdtoy: doublespeed is 0 or 1" severity failure;
  assert synthesize <= 1 report "xfc_castdtoy: synthesize is 0 or 1" severity failure;

  -- unpack
  exponent_d <= aa(63 downto 53);
  exponent_is_zero <= '1' when unsigned(exponent_d) = 0 else '0';
  exponent_is_ones <= '1' when unsigned(exponent_d) = 2047 else '0';
  fraction_is_zero <= '1' when unsigned(aa(fraction_bits downto 1)) = 0 else '0';
  marks_d <= aa(64) & (exponent_is_ones and not fraction_is_zero) & exponent_is_zero &
             (exponent_is_ones and fraction_is_zero);
  significand_d <= not ('1' & aa(fraction_bits downto 1)) when target = 1 and aa(64) = '1' else
                   '1' & aa(fraction_bits downto 1);

  unpack_0 : entity work.xfc_register generic map (ieee_exponent, unpack_border)
    port map (sysclk, enable, exponent_d, exponent);
  unpack_1 : entity work.xfc_register generic map (4, unpack_border) port map (sysclk, enable, marks_d, marks);
  unpack_2 : entity work.xfc_register generic map (significand_bits, unpack_border)
    port map (sysclk, enable, significand_d, significand);

  -- convert
  increment <= unsigned(marks(3 downto 3)) when target = 1 else "0";
  low_d <= std_logic_vector(resize(unsigned(significand(low_bits - 1 downto 0)), low_bits + 1) + increment);

  convert_0 : entity work.xfc_register generic map (ieee_exponent, convert_border)
    port map (sysclk, enable, exponent, convert_exponent);
  convert_1 : entity work.xfc_register generic map (4, convert_border)
    port map (sysclk, enable, marks, convert_marks);
  convert_2 : entity work.xfc_register generic map (low_bits + 1, convert_border)
    port map (sysclk, enable, low_d, low);
  convert_3 : entity work.xfc_register generic map (high_bits, convert_border)
    port map (sysclk, enable, significand(significand_bits - 1 downto low_bits), high);

  -- carry: the significand is never zero, so nothing is carried into the sign
  high_sum <= std_logic_vector(unsigned(high) + unsigned(low(low_bits downto low_bits)));
  front <= (others => convert_marks(3));
  for_adders : if target = 1 generate
    value_d <= front & high_sum & low(low_bits - 1 downto 0) & "000000" & "00" & convert_exponent;
  end generate;
  for_others : if target = 0 generate
    value_d <= convert_marks(3) & high_sum & low(low_bits - 1 downto 0) & "00" & convert_exponent;
  end generate;

  carry_0 : entity work.xfc_register generic map (10 * target + 67, 1) port map (sysclk, enable, value_d, cc);
  carry_1 : entity work.xfc_register generic map (3, 1)
    port map (sysclk, enable, convert_marks(2 downto 0), flags);

  ccsat <= flags(0);
  cczip <= flags(1);
  ccnan <= flags(2);
end rtl;
