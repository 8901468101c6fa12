-- Converts an integer of 32 bits to YDouble: in adder form (target 1), its bits where the exponent of 2 to the power 31
-- puts them, or normalized for a multiplier or divider (target 0). Exact.
--   step magnitude:  without its sign (target 0)
--   step normalize:  highest 1 to the front (target 0)
--   step place:      the fields
-- Latency 1 cycle.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_castltoy is
  generic (target : natural);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(32 downto 1);
        cc : out std_logic_vector(10 * target + 67 downto 1);
        ccsat, cczip, ccnan : out std_logic);
end xfc_castltoy;

architecture rtl of xfc_castltoy is
  constant width    : positive := 32;
  constant padded   : positive := 8 * (width / 8 + 1);
  constant exponent : unsigned(12 downto 0) := to_unsigned(1054, 13);   -- of 2 to the power 31

  signal sign, zero_d, zero : std_logic_vector(0 downto 0);
  signal value_d : std_logic_vector(10 * target + 67 downto 1);

  -- magnitude
  signal complement, magnitude : std_logic_vector(width - 1 downto 0);

  -- normalize
  signal normal : std_logic_vector(padded - 1 downto 0);
  signal zeros : std_logic_vector(5 downto 0);
  signal passed : std_logic_vector(0 downto 0);

  -- place
  signal front : std_logic_vector(4 downto 0);
  signal behind : std_logic_vector(26 downto 0);
  signal tail : std_logic_vector(52 - padded downto 0);
  signal leading : std_logic_vector(12 downto 0);
begin
  assert target <= 1 report "xfc_castltoy: target is 0 or 1" severity failure;

  sign <= aa(width downto width);
  zero_d <= "1" when unsigned(aa) = 0 else "0";

  for_adders : if target = 1 generate
    -- place
    front <= (others => sign(0));
    behind <= (others => '0');
    value_d <= front & aa & behind & std_logic_vector(exponent);
  end generate;

  for_others : if target = 0 generate
    -- magnitude
    complement <= not aa when sign = "1" else aa;
    magnitude <= std_logic_vector(unsigned(complement) + unsigned(sign));

    -- normalize
    normalize : entity work.xfc_normalize generic map (width, 1, 0, 0, 0, 0)
      port map (sysclk, enable, magnitude, '0', "0", normal, zeros, passed);

    -- place
    tail <= (others => '0');
    leading <= std_logic_vector(exponent - unsigned(zeros));
    value_d <= sign & normal & tail & leading;
  end generate;

  place_0 : entity work.xfc_register generic map (10 * target + 67, 1) port map (sysclk, enable, value_d, cc);
  place_1 : entity work.xfc_register generic map (1, 1) port map (sysclk, enable, zero_d, zero);

  ccsat <= '0';
  cczip <= zero(0);
  ccnan <= '0';
end rtl;
